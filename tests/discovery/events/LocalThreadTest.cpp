#include "discovery/events/LocalThread.h"

#include "discovery/events/LocalSemaphore.h"
#include "platform/Threads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <bit>

namespace tessera {
namespace {

TEST(LocalThread, RunsItsFunctionOnceStarted) {
    std::atomic<std::uint32_t> id{0};
    LocalThread thread("worker", [&] { id = platform::currentThreadId(); });
    EXPECT_EQ(id, 0u);
    EXPECT_TRUE(thread.start());
    EXPECT_TRUE(thread.join());
    EXPECT_NE(id, 0u);
    EXPECT_NE(id, platform::currentThreadId());
}

TEST(LocalThread, StartsOnlyOnce) {
    std::atomic<int> runs{0};
    LocalThread thread("worker", [&] { ++runs; });
    EXPECT_TRUE(thread.start());
    EXPECT_FALSE(thread.start());
    thread.join();
    EXPECT_FALSE(thread.start());
    EXPECT_EQ(runs, 1);
}

TEST(LocalThread, ThatIsNeverStartedNeverRuns) {
    std::atomic<bool> ran{false};
    {
        LocalThread thread("idle", [&] { ran = true; });
        EXPECT_FALSE(thread.join());
    }
    platform::sleepFor(20);
    EXPECT_FALSE(ran);
}

TEST(LocalThread, RunsOnWithoutItsObject) {
    LocalSemaphore mayEnd(0);
    LocalSemaphore ended(0);
    {
        LocalThread thread("free", [&] {
            mayEnd.wait(LocalSemaphore::kForever);
            ended.release(1);
        });
        ASSERT_TRUE(thread.start());
    }
    mayEnd.release(1);
    EXPECT_TRUE(ended.wait(20'000));
}

TEST(LocalThread, TakesThreePriorities) {
    LocalSemaphore mayEnd(0);
    LocalThread thread("worker", [&] { mayEnd.wait(LocalSemaphore::kForever); });
    thread.start();
    EXPECT_TRUE(thread.setPriority(0));
    EXPECT_FALSE(thread.setPriority(3));
    EXPECT_FALSE(thread.setPriority(-1));
    mayEnd.release(1);
    thread.join();
}

TEST(LocalThread, RunsOnlyOnProcessorsOfTheProcess) {
    const std::uint64_t all = platform::processAffinityMask();
    LocalSemaphore mayEnd(0);
    LocalThread thread("worker", [&] { mayEnd.wait(LocalSemaphore::kForever); });
    thread.start();
    EXPECT_TRUE(thread.setAffinity(std::countr_zero(all)));
    if (std::countr_one(all) < 64) {
        EXPECT_FALSE(thread.setAffinity(std::countr_one(all)));
    }
    EXPECT_FALSE(thread.setAffinity(64));
    EXPECT_FALSE(thread.setAffinity(-1));
    mayEnd.release(1);
    thread.join();
}

} // namespace
} // namespace tessera
