// Timers of a thread that gets its messages, as in a host with windows.
#include "platform/ThreadTimer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <stdexcept>
#include <thread>
#include <windows.h>

namespace tessera::platform {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kDeadline = std::chrono::seconds(20);

// One message of this thread, whenever it comes; false when none comes.
bool takeMessage() {
    const auto end = Clock::now() + kDeadline;
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) == FALSE) {
        if (Clock::now() > end) {
            return false;
        }
        Sleep(1);
    }
    DispatchMessageW(&message);
    return true;
}

template <class Condition>
bool messagesUntil(Condition condition) {
    while (!condition()) {
        if (!takeMessage()) {
            return false;
        }
    }
    return true;
}

TEST(TimerMessages, TickATimerThatNoLoopOfOursRuns) {
    int ticks = 0;
    const auto start = Clock::now();
    const ThreadTimer timer(40, [&] { ++ticks; });
    ASSERT_TRUE(timer.isRunning());
    ASSERT_TRUE(messagesUntil([&] { return ticks == 3; }));
    // The system's timers may come a little early.
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(60));
}

TEST(TimerMessages, GiveAPeriodOneTickBesideALoopOfOurs) {
    int ticks = 0;
    const ThreadTimer timer(200, [&] { ++ticks; });
    Sleep(210);
    EXPECT_EQ(runDueTimers(), 1);
    ASSERT_TRUE(takeMessage());
    EXPECT_EQ(ticks, 1) << "the message is about a period that had its tick";
    ASSERT_TRUE(messagesUntil([&] { return ticks == 2; }));
    EXPECT_EQ(runDueTimers(), 0);
}

TEST(TimerMessages, StopWithTheTimer) {
    int ticks = 0;
    auto timer = std::make_unique<ThreadTimer>(10, [&] { ++ticks; });
    Sleep(50);
    timer.reset();
    const auto end = Clock::now() + std::chrono::milliseconds(60);
    MSG message;
    while (Clock::now() < end) {
        if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            DispatchMessageW(&message);
        }
    }
    EXPECT_EQ(ticks, 0);
}

TEST(TimerMessages, ComeToTheThreadThatMadeTheTimer) {
    int ticks = 0;
    const ThreadTimer timer(10, [&] { ++ticks; });
    Sleep(50);
    std::thread([] {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            DispatchMessageW(&message);
        }
    }).join();
    EXPECT_EQ(ticks, 0);
    EXPECT_TRUE(messagesUntil([&] { return ticks > 0; }));
}

TEST(TimerMessages, MayDestroyTheTimerInItsTick) {
    int ticks = 0;
    std::unique_ptr<ThreadTimer> timer;
    timer = std::make_unique<ThreadTimer>(10, [&] {
        timer.reset();
        ++ticks;
    });
    EXPECT_TRUE(messagesUntil([&] { return ticks == 1; }));
    EXPECT_EQ(timer, nullptr);
}

TEST(TimerMessages, LetNothingThatATickThrowsIntoTheHostsLoop) {
    int ticks = 0;
    const ThreadTimer timer(10, [&] {
        ++ticks;
        throw std::runtime_error("from a tick");
    });
    EXPECT_TRUE(messagesUntil([&] { return ticks == 2; }));
}

} // namespace
} // namespace tessera::platform
