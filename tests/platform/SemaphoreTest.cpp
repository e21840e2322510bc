#include "platform/Semaphore.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace tessera::platform {
namespace {

constexpr std::uint32_t kSoon = 30;

TEST(Semaphore, IsTakenAsOftenAsItsCount) {
    Semaphore semaphore(2);
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_TRUE(semaphore.wait(kNoTimeLimit));
    EXPECT_FALSE(semaphore.wait(0));
    EXPECT_FALSE(semaphore.wait(kSoon));
}

TEST(Semaphore, ReleaseAddsItsCount) {
    Semaphore semaphore(0);
    EXPECT_TRUE(semaphore.release(3));
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_FALSE(semaphore.wait(0));
}

TEST(Semaphore, RefusesToReleaseNothingOrTooMuch) {
    Semaphore semaphore(1);
    EXPECT_FALSE(semaphore.release(0));
    EXPECT_FALSE(semaphore.release(-1));
    EXPECT_FALSE(semaphore.release(Semaphore::kMaximum));
    EXPECT_TRUE(semaphore.wait(0));
    EXPECT_FALSE(semaphore.wait(0)) << "what was refused added nothing";
    EXPECT_TRUE(semaphore.release(Semaphore::kMaximum));
    EXPECT_FALSE(semaphore.release(1));
}

TEST(Semaphore, WithANegativeCountIsNone) {
    Semaphore semaphore(-1);
    EXPECT_FALSE(semaphore.isValid());
    EXPECT_FALSE(semaphore.wait(kNoTimeLimit));
    EXPECT_FALSE(semaphore.release(1));
}

TEST(Semaphore, WakesAsManySleepersAsWereReleased) {
    Semaphore work(0);
    Semaphore done(0);
    std::vector<std::thread> sleepers;
    for (int i = 0; i < 4; ++i) {
        sleepers.emplace_back([&] {
            EXPECT_TRUE(work.wait(kNoTimeLimit));
            EXPECT_TRUE(done.release(1));
        });
    }
    EXPECT_TRUE(work.release(3));
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(done.wait(20'000));
    }
    EXPECT_FALSE(done.wait(kSoon));
    EXPECT_TRUE(work.release(1));
    EXPECT_TRUE(done.wait(20'000));
    for (std::thread& sleeper : sleepers) {
        sleeper.join();
    }
}

TEST(Semaphore, LosesNoneAmongManyThreads) {
    constexpr int kThreads = 4;
    constexpr int kRounds = 5000;
    Semaphore semaphore(0);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                ASSERT_TRUE(semaphore.wait(60'000));
            }
        });
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                ASSERT_TRUE(semaphore.release(1));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_FALSE(semaphore.wait(0));
}

} // namespace
} // namespace tessera::platform
