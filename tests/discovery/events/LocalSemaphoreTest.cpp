#include "discovery/events/LocalSemaphore.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace tessera {
namespace {

TEST(LocalSemaphore, GivesOutItsCountAndWhatIsReleased) {
    LocalSemaphore semaphore(1);
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_FALSE(semaphore.wait(0));
    EXPECT_FALSE(semaphore.wait(20));
    EXPECT_TRUE(semaphore.release(2));
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_TRUE(semaphore.wait(0xffffffffu));
    EXPECT_FALSE(semaphore.wait(0));
}

TEST(LocalSemaphore, HoldsAtMost0x7fffffff) {
    LocalSemaphore semaphore(0x7fffffff);
    EXPECT_FALSE(semaphore.release(1));
    EXPECT_FALSE(semaphore.release(0));
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_TRUE(semaphore.release(1));
}

TEST(LocalSemaphore, WaitWithoutLimitEndsAtARelease) {
    LocalSemaphore semaphore(0);
    std::thread releaser([&] { semaphore.release(1); });
    EXPECT_TRUE(semaphore.wait(LocalSemaphore::kForever));
    releaser.join();
}

TEST(LocalSemaphore, SleepLastsItsTime) {
    const auto before = std::chrono::steady_clock::now();
    LocalSemaphore::sleep(30);
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(30));
    LocalSemaphore::sleep(0);
}

} // namespace
} // namespace tessera
