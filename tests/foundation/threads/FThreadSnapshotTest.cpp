#include "foundation/threads/FThreadSnapshot.h"

#include "platform/Semaphore.h"
#include "platform/Threads.h"
#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <vector>

namespace tessera {
namespace {

class Sleepers {
public:
    ~Sleepers() {
        end_.release(static_cast<std::int32_t>(threads_.size()) + 1);
        for (const platform::ThreadHandle& thread : threads_) {
            thread.wait(platform::kNoTimeLimit);
        }
    }
    void add() {
        threads_.push_back(platform::ThreadHandle::createSuspended(
            [](void* self) -> std::uint32_t {
                static_cast<Sleepers*>(self)->end_.wait(platform::kNoTimeLimit);
                return 0;
            },
            this));
        threads_.back().resume();
    }

private:
    platform::Semaphore end_{0};
    std::vector<platform::ThreadHandle> threads_;
};

// Threads of earlier tests that have ended may take a moment to leave the list.
int quietCount() {
    FThreadSnapshot snapshot;
    int last = snapshot.capture();
    testing_support::eventually([&] {
        platform::sleepFor(20);
        return std::exchange(last, snapshot.capture()) == last;
    });
    return last;
}

TEST(FThreadSnapshot, CaptureGivesTheNumberOfThreads) {
    const int before = quietCount();
    EXPECT_GE(before, 1);
    Sleepers sleepers;
    sleepers.add();
    FThreadSnapshot snapshot;
    EXPECT_EQ(snapshot.capture(), before + 1);
}

TEST(FThreadSnapshot, FindsTheThreadsThatCameSince) {
    quietCount();
    FThreadSnapshot snapshot;
    snapshot.capture();
    EXPECT_EQ(snapshot.findNew(), 0);
    EXPECT_EQ(snapshot.openNew(0), 0u);
    Sleepers sleepers;
    sleepers.add();
    sleepers.add();
    EXPECT_EQ(snapshot.findNew(), 2);
    const std::set<std::uintptr_t> opened{snapshot.openNew(0), snapshot.openNew(1)};
    EXPECT_EQ(opened.size(), 2u);
    EXPECT_EQ(opened.count(0), 0u);
    EXPECT_EQ(snapshot.openNew(2), 0u);
    EXPECT_EQ(snapshot.openNew(-1), 0u);
    EXPECT_EQ(snapshot.findNew(), 2) << "none is noted twice";
}

TEST(FThreadSnapshot, LooksCloserOnlyWhenThereAreMoreThanBefore) {
    quietCount();
    FThreadSnapshot snapshot;
    auto earlier = std::make_unique<Sleepers>();
    earlier->add();
    const int count = snapshot.capture();
    earlier.reset();
    FThreadSnapshot probe;
    ASSERT_TRUE(testing_support::eventually([&] { return probe.capture() == count - 1; }));
    Sleepers sleepers;
    sleepers.add();
    EXPECT_EQ(snapshot.findNew(), 0);
    sleepers.add();
    EXPECT_EQ(snapshot.findNew(), 2);
}

TEST(FThreadSnapshot, NotesAtMost32NewOnes) {
    quietCount();
    FThreadSnapshot snapshot;
    snapshot.capture();
    Sleepers sleepers;
    for (int i = 0; i < 40; ++i) {
        sleepers.add();
    }
    EXPECT_EQ(snapshot.findNew(), 32);
    EXPECT_NE(snapshot.openNew(31), 0u);
    EXPECT_EQ(snapshot.openNew(32), 0u);
}

TEST(FThreadSnapshot, CapturesAtMost256) {
    Sleepers sleepers;
    for (int i = 0; i < 260; ++i) {
        sleepers.add();
    }
    FThreadSnapshot snapshot;
    EXPECT_EQ(snapshot.capture(), 256);
}

} // namespace
} // namespace tessera
