#include "foundation/threads/FReadWriteLock.h"

#include "foundation/threads/FHeldLocks.h"
#include "foundation/threads/FLockEntries.h"
#include "foundation/threads/FLockError.h"
#include "foundation/threads/FThreadLocal.h"
#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace tessera {
namespace {

// A record of a held lock is a word for the lock and two half words.
static_assert(sizeof(FHeldLocks::Entry) == 16 && FHeldLocks::kCapacity == 16);
static_assert(FHeldLocks::kShared == 1 && FHeldLocks::kExclusive == 2);

using Codes = std::vector<int>;

std::mutex codesGuard;
Codes codes;

void noteCode(int code) {
    const std::lock_guard guard(codesGuard);
    codes.push_back(code);
}

Codes takeCodes() {
    const std::lock_guard guard(codesGuard);
    return std::exchange(codes, {});
}

// A thread of a foreign program: it tidies up after itself.
template <class Act>
void onAnotherThread(Act act) {
    std::thread([&] {
        act();
        releaseThreadLocals();
    }).join();
}

class FReadWriteLockTest : public testing::Test {
protected:
    FReadWriteLockTest() { setLockErrorHandler(noteCode); }
    ~FReadWriteLockTest() override {
        EXPECT_EQ(takeCodes(), Codes());
        setLockErrorHandler(nullptr);
        releaseThreadLocals();
        takeCodes();
    }

    static bool othersMayRead(FReadWriteLock& lock) {
        bool may = false;
        onAnotherThread([&] {
            may = lock.tryLockRead();
            if (may) {
                lock.unlockRead();
            }
        });
        return may;
    }
    static bool othersMayWrite(FReadWriteLock& lock) {
        bool may = false;
        onAnotherThread([&] {
            may = lock.tryLockWrite();
            if (may) {
                lock.unlockWrite();
            }
        });
        return may;
    }

    FReadWriteLock lock_{true};
};

TEST_F(FReadWriteLockTest, ReadersShareAndKeepWritersOut) {
    EXPECT_TRUE(lock_.isValid());
    lock_.lockRead();
    EXPECT_TRUE(othersMayRead(lock_));
    EXPECT_FALSE(othersMayWrite(lock_));
    lock_.unlockRead();
    EXPECT_TRUE(othersMayWrite(lock_));
}

TEST_F(FReadWriteLockTest, WriterKeepsEverybodyOut) {
    lock_.lockWrite();
    EXPECT_FALSE(othersMayRead(lock_));
    EXPECT_FALSE(othersMayWrite(lock_));
    lock_.unlockWrite();
    EXPECT_TRUE(othersMayRead(lock_));
    EXPECT_TRUE(othersMayWrite(lock_));
}

TEST_F(FReadWriteLockTest, NestedReadsAreReleasedByTheLastUnlock) {
    lock_.lockRead();
    lock_.lockRead();
    EXPECT_TRUE(lock_.tryLockRead());
    lock_.unlockRead();
    lock_.unlockRead();
    EXPECT_FALSE(othersMayWrite(lock_));
    lock_.unlockRead();
    EXPECT_TRUE(othersMayWrite(lock_));
}

TEST_F(FReadWriteLockTest, NestedWritesAreReleasedByTheLastUnlock) {
    lock_.lockWrite();
    lock_.lockWrite();
    EXPECT_TRUE(lock_.tryLockWrite());
    lock_.unlockWrite();
    lock_.unlockWrite();
    EXPECT_FALSE(othersMayRead(lock_));
    lock_.unlockWrite();
    EXPECT_TRUE(othersMayRead(lock_));
}

TEST_F(FReadWriteLockTest, WriterMayRead) {
    lock_.lockWrite();
    lock_.lockRead();
    EXPECT_TRUE(lock_.tryLockRead());
    lock_.unlockRead();
    lock_.unlockRead();
    EXPECT_FALSE(othersMayRead(lock_)) << "the write lock is still held";
    lock_.unlockWrite();
    EXPECT_TRUE(othersMayWrite(lock_));
}

TEST_F(FReadWriteLockTest, NestedReadNeverWaitsBehindAWriter) {
    lock_.lockRead();
    std::atomic<bool> written{false};
    std::thread writer([&] {
        lock_.lockWrite();
        written = true;
        lock_.unlockWrite();
        releaseThreadLocals();
    });
    EXPECT_TRUE(testing_support::eventually([&] { return !othersMayRead(lock_); })) << "the writer waits";
    lock_.lockRead();
    EXPECT_FALSE(written);
    lock_.unlockRead();
    lock_.unlockRead();
    writer.join();
    EXPECT_TRUE(written);
}

TEST_F(FReadWriteLockTest, WriteRequestUnderAReadLockIsReportedAsMinus3) {
    lock_.lockRead();
    EXPECT_EQ(FHeldLocks::push(&lock_, FHeldLocks::kExclusive), -3);
    EXPECT_EQ(takeCodes(), Codes{-3});
    lock_.unlockRead();
    EXPECT_TRUE(othersMayWrite(lock_)) << "the refused request left no count";
}

TEST_F(FReadWriteLockTest, WriteTryUnderAReadLockIsFalseWithoutAReport) {
    lock_.lockRead();
    EXPECT_FALSE(lock_.tryLockWrite());
    lock_.unlockRead();
    EXPECT_TRUE(lock_.tryLockWrite());
    lock_.unlockWrite();
}

TEST_F(FReadWriteLockTest, SurvivedUpgradeBlocksForGood) {
    // The thread waits for its own read lock; it is left behind with the lock, for the rest of the process.
    static auto* const forsaken = new FReadWriteLock(true);
    static auto* const flag = new std::atomic<bool>(false);
    std::thread([] {
        forsaken->lockRead();
        forsaken->lockWrite();
        *flag = true;
    }).detach();
    EXPECT_TRUE(testing_support::eventually([] {
        const std::lock_guard guard(codesGuard);
        return codes == Codes{-3};
    }));
    takeCodes();
    EXPECT_TRUE(testing_support::eventually([] { return !othersMayRead(*forsaken); })) << "it waits as a writer";
    EXPECT_FALSE(*flag);
}

TEST_F(FReadWriteLockTest, SeventeenthLockOfAThreadIsReportedAsMinus4) {
    std::vector<std::unique_ptr<FReadWriteLock>> locks;
    for (int i = 0; i < 17; ++i) {
        locks.push_back(std::make_unique<FReadWriteLock>(true));
    }
    for (int i = 0; i < 16; ++i) {
        locks[i]->lockRead();
    }
    EXPECT_EQ(takeCodes(), Codes());
    locks[16]->lockRead();
    EXPECT_EQ(takeCodes(), Codes{-4});
    EXPECT_TRUE(othersMayWrite(*locks[16])) << "an unbooked read takes nothing";
    EXPECT_FALSE(locks[16]->tryLockRead());
    EXPECT_EQ(takeCodes(), Codes{-4});
    locks[0]->lockRead();
    locks[0]->unlockRead();
    EXPECT_EQ(takeCodes(), Codes()) << "nested use needs no entry of its own";
    for (int i = 15; i >= 0; --i) {
        locks[i]->unlockRead();
    }
}

TEST_F(FReadWriteLockTest, WriteLockTakenAsTheSeventeenthIsNeverReleased) {
    std::vector<std::unique_ptr<FReadWriteLock>> locks;
    for (int i = 0; i < 17; ++i) {
        locks.push_back(std::make_unique<FReadWriteLock>(true));
    }
    for (int i = 0; i < 16; ++i) {
        locks[i]->lockRead();
    }
    locks[16]->lockWrite();
    EXPECT_EQ(takeCodes(), Codes{-4});
    EXPECT_FALSE(othersMayRead(*locks[16]));
    locks[16]->unlockWrite();
    EXPECT_EQ(takeCodes(), Codes{-1});
    EXPECT_FALSE(othersMayRead(*locks[16]));
    for (int i = 15; i >= 0; --i) {
        locks[i]->unlockRead();
    }
}

TEST_F(FReadWriteLockTest, UnlockInTheOrderOfTakingIsReportedOnce) {
    FReadWriteLock second(true);
    lock_.lockRead();
    second.lockRead();
    lock_.unlockRead();
    EXPECT_EQ(takeCodes(), Codes{-1});
    EXPECT_TRUE(othersMayWrite(lock_)) << "the entry is cleared and the lock is free";
    second.unlockRead();
    EXPECT_EQ(takeCodes(), Codes());
    EXPECT_TRUE(othersMayWrite(second));
}

TEST_F(FReadWriteLockTest, ClearedEntriesGoWithTheOneAboveThem) {
    std::vector<std::unique_ptr<FReadWriteLock>> locks;
    for (int i = 0; i < 16; ++i) {
        locks.push_back(std::make_unique<FReadWriteLock>(true));
        locks.back()->lockRead();
    }
    for (int i = 0; i < 15; ++i) {
        locks[i]->unlockRead();
    }
    EXPECT_EQ(takeCodes().size(), 15u);
    lock_.lockRead();
    EXPECT_EQ(takeCodes(), Codes{-4}) << "their places aren't free yet";
    locks[15]->unlockRead();
    lock_.lockRead();
    lock_.unlockRead();
    EXPECT_EQ(takeCodes(), Codes());
}

TEST_F(FReadWriteLockTest, UnlockWithoutALockIsMisuse) {
    onAnotherThread([&] { lock_.unlockRead(); });
    EXPECT_EQ(takeCodes(), Codes{-2}) << "a thread that never locked has no record";
    lock_.lockRead();
    lock_.unlockRead();
    lock_.unlockRead();
    EXPECT_EQ(takeCodes(), Codes{-1});
    lock_.unlockWrite();
    EXPECT_EQ(takeCodes(), Codes{-1});
    EXPECT_TRUE(othersMayWrite(lock_));
}

TEST_F(FReadWriteLockTest, UnlockInTheWrongModeIsReportedAndFreesTheLock) {
    lock_.lockWrite();
    lock_.unlockRead();
    EXPECT_EQ(takeCodes(), Codes{-1});
    EXPECT_TRUE(othersMayWrite(lock_));
    lock_.lockRead();
    lock_.unlockWrite();
    EXPECT_EQ(takeCodes(), Codes{-1});
    EXPECT_TRUE(othersMayWrite(lock_));
}

TEST_F(FReadWriteLockTest, MixedOrderOfModesIsReportedAtTheLastUnlock) {
    lock_.lockWrite();
    lock_.lockRead();
    lock_.unlockWrite();
    EXPECT_EQ(takeCodes(), Codes());
    lock_.unlockRead();
    EXPECT_EQ(takeCodes(), Codes{-1});
    EXPECT_TRUE(othersMayWrite(lock_));
}

TEST_F(FReadWriteLockTest, FailedTryLeavesNoEntryBehind) {
    std::atomic<bool> held{false};
    std::atomic<bool> letGo{false};
    std::thread writer([&] {
        lock_.lockWrite();
        held = true;
        while (!letGo) {
            std::this_thread::yield();
        }
        lock_.unlockWrite();
        releaseThreadLocals();
    });
    EXPECT_TRUE(testing_support::eventually([&] { return held.load(); }));
    EXPECT_FALSE(lock_.tryLockRead());
    EXPECT_FALSE(lock_.tryLockWrite());
    letGo = true;
    writer.join();
    EXPECT_TRUE(lock_.tryLockWrite());
    lock_.unlockWrite();
}

TEST_F(FReadWriteLockTest, ThreadThatEndsWithALockHeldIsMisuse) {
    FReadWriteLock forgotten(true);
    onAnotherThread([&] { forgotten.lockRead(); });
    EXPECT_EQ(takeCodes(), Codes{-1});
}

TEST_F(FReadWriteLockTest, SystemWithoutTheOperationsIsReportedAsMisuse) {
    const platform::WordLockEntries none{};
    replaceLockEntries(&none);
    {
        FReadWriteLock lock(true);
        EXPECT_EQ(takeCodes(), Codes{-1});
        lock.lockRead();
        lock.unlockRead();
        EXPECT_EQ(takeCodes(), (Codes{-1, -1}));
        lock.lockWrite();
        lock.unlockWrite();
        EXPECT_EQ(takeCodes(), (Codes{-1, -1}));
        EXPECT_FALSE(lock.tryLockRead());
        EXPECT_FALSE(lock.tryLockWrite());
    }
    replaceLockEntries(nullptr);
}

TEST_F(FReadWriteLockTest, OnlyTheOuterUseReachesTheSystem) {
    static int calls;
    calls = 0;
    const platform::WordLockEntries counting{
        [](platform::WordLock&) {},
        [](platform::WordLock&) { ++calls; },
        [](platform::WordLock&) { ++calls; },
        [](platform::WordLock&) { ++calls; },
        [](platform::WordLock&) { ++calls; },
        [](platform::WordLock&) { return ++calls > 0; },
        [](platform::WordLock&) { return ++calls > 0; },
    };
    replaceLockEntries(&counting);
    {
        FReadWriteLock lock(true);
        lock.lockRead();
        EXPECT_EQ(calls, 1);
        lock.lockRead();
        lock.tryLockRead();
        lock.unlockRead();
        lock.unlockRead();
        EXPECT_EQ(calls, 1);
        lock.unlockRead();
        EXPECT_EQ(calls, 2);
    }
    replaceLockEntries(nullptr);
}

TEST_F(FReadWriteLockTest, RecordAnswersTheStandardIdentifierAlone) {
    lock_.lockRead();
    FHeldLocks* record = FHeldLocks::ofThisThread();
    ASSERT_NE(record, nullptr);
    void* out = nullptr;
    EXPECT_EQ(record->queryInterface(IBaseUnknown::iid, &out), kResultOk);
    EXPECT_EQ(out, static_cast<IBaseUnknown*>(record));
    record->release();
    EXPECT_EQ(record->queryInterface("{20D444BC-9924-4483-A7B6-35199221D1AC}"_uid, &out), kNoInterface);
    EXPECT_EQ(out, nullptr);
    lock_.unlockRead();
}

TEST_F(FReadWriteLockTest, GuardsPlainDataAmongManyThreads) {
    constexpr int kRounds = 5000;
    long value = 0;
    long twin = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                lock_.lockWrite();
                ++value;
                lock_.lockRead();
                ++twin;
                lock_.unlockRead();
                lock_.unlockWrite();
            }
            releaseThreadLocals();
        });
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                lock_.lockRead();
                lock_.lockRead();
                EXPECT_EQ(value, twin);
                lock_.unlockRead();
                lock_.unlockRead();
            }
            releaseThreadLocals();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(value, 2 * kRounds);
}

TEST_F(FReadWriteLockTest, SlowFormSharesAndExcludesButTriesNothing) {
    FReadWriteLock slow(false);
    ASSERT_TRUE(slow.isValid());
    EXPECT_FALSE(slow.tryLockRead());
    EXPECT_FALSE(slow.tryLockWrite());
    slow.lockRead();
    std::thread([&] {
        slow.lockRead();
        slow.unlockRead();
    }).join();
    std::atomic<bool> written{false};
    std::thread writer([&] {
        slow.lockWrite();
        written = true;
        slow.unlockWrite();
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_FALSE(written);
    slow.unlockRead();
    writer.join();
    EXPECT_TRUE(written);
}

TEST(FReadWriteLockDeathTest, MisuseEndsTheProcessByDefault) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            setLockErrorHandler(noteCode);
            setLockErrorHandler(nullptr);
            FReadWriteLock lock(true);
            lock.unlockRead();
        },
        "");
}

} // namespace
} // namespace tessera
