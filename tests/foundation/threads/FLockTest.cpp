#include "foundation/threads/FLock.h"

#include "foundation/threads/FLockGuard.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace tessera {
namespace {

bool anotherThreadGets(FLock& lock) {
    bool got = false;
    std::thread([&] {
        got = lock.tryLock();
        if (got) {
            lock.unlock();
        }
    }).join();
    return got;
}

TEST(FLock, KeepsOtherThreadsOut) {
    FLock lock("FLock");
    EXPECT_TRUE(anotherThreadGets(lock));
    lock.lock();
    EXPECT_FALSE(anotherThreadGets(lock));
    lock.unlock();
    EXPECT_TRUE(anotherThreadGets(lock));
}

TEST(FLock, IsFreeAfterAsManyUnlocksAsLocks) {
    FLock lock;
    lock.lock();
    lock.lock();
    EXPECT_TRUE(lock.tryLock());
    lock.unlock();
    lock.unlock();
    EXPECT_FALSE(anotherThreadGets(lock));
    lock.unlock();
    EXPECT_TRUE(anotherThreadGets(lock));
}

TEST(FLock, IsNotUnlockedByAThreadThatDoesNotHoldIt) {
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the thread sanitizer reports every such unlock, also the one that a mutex refuses";
#endif
    FLock lock;
    lock.unlock();
    lock.lock();
    std::thread([&] { lock.unlock(); }).join();
    EXPECT_FALSE(anotherThreadGets(lock));
    lock.unlock();
    EXPECT_TRUE(anotherThreadGets(lock));
}

TEST(FLock, WorksThroughItsBase) {
    FLock lock;
    ILock& base = lock;
    {
        const FLockGuard guard(base);
        EXPECT_FALSE(anotherThreadGets(lock));
    }
    EXPECT_TRUE(base.tryLock());
    EXPECT_FALSE(anotherThreadGets(lock));
    base.unlock();
    EXPECT_TRUE(anotherThreadGets(lock));
}

TEST(FLock, GuardsPlainDataAmongManyThreads) {
    constexpr int kRounds = 10'000;
    FLock lock;
    long value = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                const FLockGuard outer(lock);
                const FLockGuard nested(lock);
                ++value;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(value, 4 * kRounds);
}

} // namespace
} // namespace tessera
