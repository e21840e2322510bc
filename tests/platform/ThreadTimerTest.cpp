#include "platform/ThreadTimer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <thread>
#include <vector>

namespace tessera::platform {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kDeadline = std::chrono::seconds(20);

// What a program's main loop does: sleep until the next timer is due, run it.
template <class Condition>
bool loopUntil(Condition&& condition) {
    const auto end = Clock::now() + kDeadline;
    while (!condition()) {
        const std::int64_t sleep = millisecondsToNextTimer();
        if (Clock::now() > end || sleep < 0) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(sleep));
        runDueTimers();
    }
    return true;
}

TEST(ThreadTimer, TicksNotBeforeItsPeriodIsOver) {
    int ticks = 0;
    const auto start = Clock::now();
    const ThreadTimer timer(30, [&] { ++ticks; });
    EXPECT_TRUE(timer.isRunning());
    EXPECT_EQ(runDueTimers(), 0);
    ASSERT_TRUE(loopUntil([&] { return ticks == 3; }));
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(90));
}

TEST(ThreadTimer, MissedPeriodsAreNotMadeUpFor) {
    int ticks = 0;
    const ThreadTimer timer(5, [&] { ++ticks; });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(runDueTimers(), 1);
    EXPECT_EQ(ticks, 1);
}

TEST(ThreadTimer, TheLoopKnowsHowLongItMaySleep) {
    EXPECT_EQ(millisecondsToNextTimer(), -1);
    const ThreadTimer slow(60000, [] {});
    EXPECT_GT(millisecondsToNextTimer(), 30000);
    EXPECT_LE(millisecondsToNextTimer(), 60000);
    const ThreadTimer due(0, [] {});
    EXPECT_EQ(millisecondsToNextTimer(), 0);
}

TEST(ThreadTimer, AnotherThreadsLoopNeverTicksIt) {
    int ticks = 0;
    const ThreadTimer timer(0, [&] { ++ticks; });
    int elsewhere = -1;
    std::thread([&] { elsewhere = runDueTimers(); }).join();
    EXPECT_EQ(elsewhere, 0);
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(runDueTimers(), 1);
}

TEST(ThreadTimer, EndsWithItsObject) {
    int ticks = 0;
    {
        const ThreadTimer timer(0, [&] { ++ticks; });
    }
    EXPECT_EQ(runDueTimers(), 0);
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(millisecondsToNextTimer(), -1);
}

TEST(ThreadTimer, MayDestroyItselfAndOthersFromItsTick) {
    std::vector<int> ticked;
    std::unique_ptr<ThreadTimer> first;
    std::unique_ptr<ThreadTimer> second;
    first = std::make_unique<ThreadTimer>(0, [&] {
        ticked.push_back(1);
        second.reset();
        first.reset();
        ticked.push_back(2);
    });
    second = std::make_unique<ThreadTimer>(0, [&] { ticked.push_back(3); });
    EXPECT_EQ(runDueTimers(), 1);
    EXPECT_EQ(ticked, (std::vector<int>{1, 2}));
    EXPECT_EQ(runDueTimers(), 0);
}

TEST(ThreadTimer, ATickMayRunTheLoopAgain) {
    int inner = 0;
    int outer = 0;
    const ThreadTimer nested(60000, [&] { ++inner; });
    const ThreadTimer timer(0, [&] {
        if (++outer == 1) {
            runDueTimers();
        }
    });
    runDueTimers();
    EXPECT_GE(outer, 1);
    EXPECT_LE(outer, 2);
    EXPECT_EQ(inner, 0);
}

} // namespace
} // namespace tessera::platform
