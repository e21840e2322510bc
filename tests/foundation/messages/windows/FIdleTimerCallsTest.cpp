// The idle task's timer, as the system is asked for it.
#include "foundation/messages/FIdleTimer.h"
#include "support/windows/SystemCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tessera {
namespace {

using testing::ElementsAre;
using testing_support::SystemCalls;

TEST(FIdleTimerCalls, ATimerWithoutAWindowEvery120Milliseconds) {
    SystemCalls calls;
    calls.answer("SetTimer", 0x4321);
    calls.answer("KillTimer", 1);
    auto timer = std::make_unique<FIdleTimer>();
    EXPECT_THAT(calls.take(), ElementsAre("SetTimer(null, 0, 120, ...)"));
    timer.reset();
    EXPECT_THAT(calls.take(), ElementsAre("KillTimer(null, " + std::to_string(0x4321) + ")"));
}

} // namespace
} // namespace tessera
