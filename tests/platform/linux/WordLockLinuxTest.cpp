// What the Linux side's lock does beyond its contract: it forgives a wrong release, and shows who sleeps.
#include "platform/WordLock.h"

#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace tessera::platform {
namespace {

class WordLockLinux : public testing::Test {
protected:
    bool isFree() const { return (lock_.words[0] & 0x3fffffffu) == 0; }

    const WordLockEntries entries_ = wordLockEntries();
    WordLock lock_{};
};

TEST_F(WordLockLinux, ReleaseInTheWrongModeLetsGoOfWhatIsHeld) {
    entries_.acquireExclusive(lock_);
    entries_.releaseShared(lock_);
    EXPECT_TRUE(isFree());
    entries_.acquireShared(lock_);
    entries_.releaseExclusive(lock_);
    EXPECT_TRUE(isFree());
}

TEST_F(WordLockLinux, ReleaseOfAFreeLockDoesNothing) {
    entries_.releaseShared(lock_);
    entries_.releaseExclusive(lock_);
    EXPECT_TRUE(isFree());
    EXPECT_TRUE(entries_.tryAcquireShared(lock_));
}

TEST_F(WordLockLinux, SleepingWriterAndReadersAllGetTheirTurn) {
    entries_.acquireExclusive(lock_);
    std::atomic<int> through{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
        threads.emplace_back([&] {
            entries_.acquireShared(lock_);
            ++through;
            entries_.releaseShared(lock_);
        });
        threads.emplace_back([&] {
            entries_.acquireExclusive(lock_);
            ++through;
            entries_.releaseExclusive(lock_);
        });
    }
    constexpr std::uint32_t kBothWait = 0xc0000000u;
    EXPECT_TRUE(
        testing_support::eventually([&] { return (std::atomic_ref(lock_.words[0]).load() & kBothWait) == kBothWait; }));
    EXPECT_EQ(through, 0);
    entries_.releaseExclusive(lock_);
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(through, 6);
    EXPECT_EQ(lock_.words[0], 0u);
}

} // namespace
} // namespace tessera::platform
