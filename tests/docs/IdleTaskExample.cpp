#include "foundation/messages/FIdleTimer.h"
#include "foundation/messages/FTaskList.h"
#include "foundation/threads/FThread.h"
#include "platform/ThreadTimer.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace tessera::test {
namespace {

// [idle task]
// A program's loop, where there is no host that has one.
void runUntil(const bool& ended) {
    FIdleTimer idle; // ticks on the thread that made it
    while (!ended) {
        platform::runDueTimers();
        FThread::sleep(10);
    }
}

// From any thread; what is posted runs on the thread of the idle task.
void endLater(bool& ended) {
    FTaskList::process().post([&ended] { ended = true; });
}
// [idle task]

TEST(IdleTaskExample, ATaskOfAnotherThreadRunsOnTheThreadOfTheIdleTask) {
    bool ended = false;
    std::thread::id ranOn;
    std::thread other([&ended, &ranOn] {
        FTaskList::process().post([&ranOn] { ranOn = std::this_thread::get_id(); });
        endLater(ended);
    });
    runUntil(ended);
    other.join();
    EXPECT_TRUE(ended);
    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

} // namespace
} // namespace tessera::test
