#include "platform/WordLock.h"

#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace tessera::platform {
namespace {

class WordLockTest : public testing::Test {
protected:
    WordLockTest() { entries_.initialize(lock_); }

    bool isFree() {
        if (!entries_.tryAcquireExclusive(lock_)) {
            return false;
        }
        entries_.releaseExclusive(lock_);
        return true;
    }
    bool admitsReaders() {
        if (!entries_.tryAcquireShared(lock_)) {
            return false;
        }
        entries_.releaseShared(lock_);
        return true;
    }

    const WordLockEntries entries_ = wordLockEntries();
    WordLock lock_{};
};

TEST_F(WordLockTest, OffersAllOperations) {
    EXPECT_NE(entries_.initialize, nullptr);
    EXPECT_NE(entries_.acquireShared, nullptr);
    EXPECT_NE(entries_.releaseShared, nullptr);
    EXPECT_NE(entries_.acquireExclusive, nullptr);
    EXPECT_NE(entries_.releaseExclusive, nullptr);
    EXPECT_NE(entries_.tryAcquireExclusive, nullptr);
    EXPECT_NE(entries_.tryAcquireShared, nullptr);
}

TEST_F(WordLockTest, ReadersShareAndKeepWritersOut) {
    entries_.acquireShared(lock_);
    entries_.acquireShared(lock_);
    EXPECT_TRUE(admitsReaders());
    EXPECT_FALSE(isFree());
    entries_.releaseShared(lock_);
    EXPECT_FALSE(isFree());
    entries_.releaseShared(lock_);
    EXPECT_TRUE(isFree());
}

TEST_F(WordLockTest, WriterKeepsEverybodyOut) {
    entries_.acquireExclusive(lock_);
    EXPECT_FALSE(admitsReaders());
    EXPECT_FALSE(entries_.tryAcquireExclusive(lock_));
    entries_.releaseExclusive(lock_);
    EXPECT_TRUE(isFree());
}

TEST_F(WordLockTest, SleepingWriterAndReadersAllGetTheirTurn) {
    entries_.acquireExclusive(lock_);
    std::atomic<int> begun{0};
    std::atomic<int> through{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
        threads.emplace_back([&] {
            ++begun;
            entries_.acquireShared(lock_);
            ++through;
            entries_.releaseShared(lock_);
        });
        threads.emplace_back([&] {
            ++begun;
            entries_.acquireExclusive(lock_);
            ++through;
            entries_.releaseExclusive(lock_);
        });
    }
    EXPECT_TRUE(testing_support::eventually([&] { return begun == 6; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(through, 0);
    entries_.releaseExclusive(lock_);
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(through, 6);
    EXPECT_TRUE(isFree());
}

TEST_F(WordLockTest, ReaderQueuesBehindAWaitingWriter) {
    entries_.acquireShared(lock_);
    std::thread writer([&] {
        entries_.acquireExclusive(lock_);
        entries_.releaseExclusive(lock_);
    });
    EXPECT_TRUE(testing_support::eventually([&] { return !admitsReaders(); }))
        << "else readers could starve the writer";
    entries_.releaseShared(lock_);
    writer.join();
    EXPECT_TRUE(isFree());
}

TEST_F(WordLockTest, GuardsPlainDataAmongManyThreads) {
    constexpr int kRounds = 20'000;
    long value = 0;
    long twin = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                entries_.acquireExclusive(lock_);
                ++value;
                ++twin;
                entries_.releaseExclusive(lock_);
            }
        });
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                entries_.acquireShared(lock_);
                ASSERT_EQ(value, twin);
                entries_.releaseShared(lock_);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(value, 2 * kRounds);
    EXPECT_TRUE(isFree());
}

} // namespace
} // namespace tessera::platform
