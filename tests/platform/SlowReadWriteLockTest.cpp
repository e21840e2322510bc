#include "platform/SlowReadWriteLock.h"

#include "platform/Semaphore.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace tessera::platform {
namespace {

// Runs `act` on a thread of its own and tells whether it has come back.
class Attempt {
public:
    template <class Act>
    explicit Attempt(Act act)
        : thread_([this, act] {
              act();
              over_.release(1);
          }) {}
    ~Attempt() { thread_.join(); }

    bool isBlocked() { return !over_.wait(50); }
    bool comesBack() { return over_.wait(20'000); }

private:
    Semaphore over_{0};
    std::thread thread_;
};

TEST(SlowReadWriteLock, ReadersShare) {
    SlowReadWriteLock lock;
    ASSERT_TRUE(lock.isValid());
    lock.lockRead();
    Attempt reader([&] {
        lock.lockRead();
        lock.unlockRead();
    });
    EXPECT_TRUE(reader.comesBack());
    lock.unlockRead();
}

TEST(SlowReadWriteLock, WriterWaitsForTheLastReader) {
    SlowReadWriteLock lock;
    lock.lockRead();
    lock.lockRead();
    Attempt writer([&] {
        lock.lockWrite();
        lock.unlockWrite();
    });
    EXPECT_TRUE(writer.isBlocked());
    lock.unlockRead();
    EXPECT_TRUE(writer.isBlocked());
    lock.unlockRead();
    EXPECT_TRUE(writer.comesBack());
}

TEST(SlowReadWriteLock, ReadersAndWritersWaitForTheWriter) {
    SlowReadWriteLock lock;
    lock.lockWrite();
    Attempt reader([&] {
        lock.lockRead();
        lock.unlockRead();
    });
    Attempt writer([&] {
        lock.lockWrite();
        lock.unlockWrite();
    });
    EXPECT_TRUE(reader.isBlocked());
    EXPECT_TRUE(writer.isBlocked());
    lock.unlockWrite();
    EXPECT_TRUE(reader.comesBack());
    EXPECT_TRUE(writer.comesBack());
}

TEST(SlowReadWriteLock, WaitingWriterDoesNotKeepReadersOut) {
    SlowReadWriteLock lock;
    lock.lockRead();
    Attempt writer([&] {
        lock.lockWrite();
        lock.unlockWrite();
    });
    EXPECT_TRUE(writer.isBlocked());
    Attempt reader([&] {
        lock.lockRead();
        lock.unlockRead();
    });
    EXPECT_TRUE(reader.comesBack());
    lock.unlockRead();
    EXPECT_TRUE(writer.comesBack());
}

TEST(SlowReadWriteLock, WriterMayWriteAgain) {
    SlowReadWriteLock lock;
    lock.lockWrite();
    lock.lockWrite();
    lock.unlockWrite();
    Attempt other([&] {
        lock.lockWrite();
        lock.unlockWrite();
    });
    EXPECT_TRUE(other.isBlocked());
    lock.unlockWrite();
    EXPECT_TRUE(other.comesBack());
}

TEST(SlowReadWriteLock, UnlockByAnotherThanTheWriterDoesNothing) {
    SlowReadWriteLock lock;
    lock.lockWrite();
    std::thread([&] { lock.unlockWrite(); }).join();
    Attempt other([&] {
        lock.lockWrite();
        lock.unlockWrite();
    });
    EXPECT_TRUE(other.isBlocked());
    lock.unlockWrite();
    EXPECT_TRUE(other.comesBack());
}

TEST(SlowReadWriteLock, GuardsPlainDataAmongManyThreads) {
    constexpr int kRounds = 2000;
    SlowReadWriteLock lock;
    long value = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                lock.lockWrite();
                ++value;
                lock.unlockWrite();
            }
        });
        threads.emplace_back([&] {
            long last = 0;
            for (int round = 0; round < kRounds; ++round) {
                lock.lockRead();
                ASSERT_GE(value, last);
                last = value;
                lock.unlockRead();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(value, 2 * kRounds);
}

} // namespace
} // namespace tessera::platform
