// FEvent and FSemaphore: which calls of the system they come to, and what they make of the results.
#include "foundation/threads/FEvent.h"
#include "foundation/threads/FSemaphore.h"
#include "support/windows/SystemCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

namespace tessera {
namespace {

using testing::ElementsAre;
using testing_support::SystemCalls;

TEST(FEventCalls, IsAnAutomaticEventOfThatNameAndUnset) {
    SystemCalls calls;
    FEvent event("com.marlgrove.test.calls");
    event.wait(30);
    EXPECT_THAT(calls.take(),
                ElementsAre("CreateEventA(null, 0, 0, \"com.marlgrove.test.calls\")", "WaitForSingleObject(..., 30)"));
}

TEST(FEventCalls, EveryEndOfAWaitButItsTimeIsASignal) {
    FEvent event("com.marlgrove.test.calls");
    for (const DWORD result : {DWORD{WAIT_OBJECT_0}, DWORD{WAIT_ABANDONED}, WAIT_FAILED}) {
        SystemCalls calls;
        calls.answer("WaitForSingleObject", static_cast<std::intptr_t>(result));
        EXPECT_TRUE(event.wait(0)) << result;
    }
    SystemCalls calls;
    calls.answer("WaitForSingleObject", 258);
    EXPECT_FALSE(event.wait(platform::kNoTimeLimit));
}

TEST(FSemaphoreCalls, ANegativeTimeIsNone) {
    SystemCalls calls;
    FSemaphore semaphore(2);
    semaphore.wait(-5);
    semaphore.wait(7);
    EXPECT_THAT(calls.take(), ElementsAre("CreateSemaphoreW(null, 2, 2147483647, null)",
                                          "WaitForSingleObject(..., 4294967295)", "WaitForSingleObject(..., 7)"));
    calls.answer("WaitForSingleObject", static_cast<std::intptr_t>(WAIT_ABANDONED));
    EXPECT_FALSE(semaphore.wait(0)) << "none was taken";
    calls.answer("CreateSemaphoreW", 0);
    EXPECT_FALSE(FSemaphore(1).isValid());
}

} // namespace
} // namespace tessera
