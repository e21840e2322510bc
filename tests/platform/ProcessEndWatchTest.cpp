#include "platform/ProcessEndWatch.h"

#include "platform/Semaphore.h"
#include "platform/Threads.h"
#include "support/Eventually.h"
#include "support/HelperProcess.h"
#include "support/ProcessTable.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <vector>

namespace tessera::platform {
namespace {

using testing_support::HelperProcess;

constexpr std::uint32_t kLong = 20'000;
constexpr std::uint32_t kSoon = 50;

TEST(ProcessEndWatch, CallsOnceWhenTheProcessIsKilled) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    Semaphore called(0);
    std::atomic<std::uint32_t> thread{0};
    ProcessEndWatch watch;
    ASSERT_TRUE(watch.start(helper.id(), [&] {
        thread = currentThreadId();
        called.release(1);
    }));
    EXPECT_FALSE(called.wait(kSoon));
    helper.kill();
    EXPECT_TRUE(called.wait(kLong));
    EXPECT_FALSE(called.wait(kSoon));
    EXPECT_NE(thread, currentThreadId());
}

TEST(ProcessEndWatch, CallsAtOnceForOneThatHasEndedAndIsStillInTheTable) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    helper.hear();
    helper.killAndKeep();
    Semaphore called(0);
    ProcessEndWatch watch;
    ASSERT_TRUE(watch.start(helper.id(), [&] { called.release(1); }));
    EXPECT_TRUE(called.wait(kLong));
}

TEST(ProcessEndWatch, IsRefusedWithoutAProcess) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    const int id = helper.id();
    helper.kill();
    ASSERT_TRUE(testing_support::eventually([&] { return testing_support::isForgotten(id); }));
    std::atomic<int> calls{0};
    ProcessEndWatch watch;
    EXPECT_FALSE(watch.start(id, [&] { ++calls; }));
    EXPECT_FALSE(watch.start(-1, [&] { ++calls; }));
    EXPECT_FALSE(watch.start(0, [&] { ++calls; }));
    watch.stop();
    EXPECT_EQ(calls, 0);
}

TEST(ProcessEndWatch, IsSilentOnceStopped) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    Semaphore called(0);
    ProcessEndWatch watch;
    ASSERT_TRUE(watch.start(helper.id(), [&] { called.release(1); }));
    watch.stop();
    watch.stop();
    helper.kill();
    EXPECT_FALSE(called.wait(kSoon));
}

TEST(ProcessEndWatch, StopWaitsForACallThatRuns) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    Semaphore inside(0);
    std::atomic<bool> over{false};
    ProcessEndWatch watch;
    ASSERT_TRUE(watch.start(helper.id(), [&] {
        inside.release(1);
        sleepFor(100);
        over = true;
    }));
    helper.kill();
    ASSERT_TRUE(inside.wait(kLong));
    watch.stop();
    EXPECT_TRUE(over);
}

TEST(ProcessEndWatch, GoesWithItsObject) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    Semaphore called(0);
    {
        ProcessEndWatch watch;
        ASSERT_TRUE(watch.start(helper.id(), [&] { called.release(1); }));
    }
    helper.kill();
    EXPECT_FALSE(called.wait(kSoon));
}

TEST(ProcessEndWatch, SecondStartTakesThePlaceOfTheFirst) {
    HelperProcess first(PROCESS_HELPER, {"lines"});
    HelperProcess second(PROCESS_HELPER, {"lines"});
    Semaphore firstEnded(0);
    Semaphore secondEnded(0);
    ProcessEndWatch watch;
    ASSERT_TRUE(watch.start(first.id(), [&] { firstEnded.release(1); }));
    ASSERT_TRUE(watch.start(second.id(), [&] { secondEnded.release(1); }));
    first.kill();
    EXPECT_FALSE(firstEnded.wait(kSoon));
    second.kill();
    EXPECT_TRUE(secondEnded.wait(kLong));
}

TEST(ProcessEndWatch, ManyProcessesAreToldApart) {
    constexpr int kCount = 8;
    std::vector<std::unique_ptr<HelperProcess>> helpers;
    std::vector<std::unique_ptr<ProcessEndWatch>> watches;
    std::atomic<unsigned> ended{0};
    Semaphore called(0);
    for (int i = 0; i < kCount; ++i) {
        helpers.push_back(std::make_unique<HelperProcess>(PROCESS_HELPER, std::vector<std::string>{"lines"}));
        watches.push_back(std::make_unique<ProcessEndWatch>());
        ASSERT_TRUE(watches[i]->start(helpers[i]->id(), [&, i] {
            ended |= 1u << i;
            called.release(1);
        }));
    }
    for (int i : {5, 0, 7}) {
        helpers[i]->kill();
        ASSERT_TRUE(called.wait(kLong));
    }
    EXPECT_EQ(ended, 1u << 5 | 1u << 0 | 1u << 7);
    EXPECT_FALSE(called.wait(kSoon));
}

TEST(ProcessEndWatch, StopAndEndMayMeet) {
    for (int i = 0; i < 30; ++i) {
        HelperProcess helper(PROCESS_HELPER, {"exit"});
        auto alive = std::make_unique<std::atomic<int>>(0);
        ProcessEndWatch watch;
        watch.start(helper.id(), [&] { ++*alive; });
        if (i % 2 == 0) {
            helper.kill();
        }
        watch.stop();
        alive.reset();
    }
}

} // namespace
} // namespace tessera::platform
