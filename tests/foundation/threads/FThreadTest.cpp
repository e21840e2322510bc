#include "foundation/threads/FThread.h"

#include "foundation/threads/FLock.h"
#include "foundation/threads/FLockGuard.h"
#include "platform/ProcessPriority.h"
#include "platform/Semaphore.h"
#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <atomic>
#include <bit>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessera {
namespace {

constexpr std::uint32_t kLong = 20'000;

// Runs until it is let go, and notes what it saw.
class WaitingThread : public FThread {
public:
    WaitingThread() : FThread("waiting") {}
    ~WaitingThread() override { end(); }

    std::uint32_t run() override {
        wasCurrent = isCurrent();
        priorityWasSet = prioritySet.load();
        began.release(1);
        mayEnd_.wait(platform::kNoTimeLimit);
        return 7;
    }
    bool setPriority(std::int32_t level) override {
        prioritySet = true;
        lastLevel = level;
        lastResult = FThread::setPriority(level);
        return lastResult;
    }
    void end() {
        mayEnd_.release(1);
        join();
    }

    platform::Semaphore began{0};
    std::atomic<bool> prioritySet{false};
    std::atomic<bool> priorityWasSet{false};
    std::atomic<bool> wasCurrent{false};
    std::int32_t lastLevel = -100;
    bool lastResult = false;

private:
    platform::Semaphore mayEnd_{0};
};

TEST(FThread, JoinOfOneThatWasNeverStartedIsTrueAtOnce) {
    FThread thread("idle");
    EXPECT_TRUE(thread.join(0));
    EXPECT_TRUE(thread.join());
    EXPECT_FALSE(thread.isStarted());
    EXPECT_FALSE(thread.getHandle());
    EXPECT_FALSE(thread.isCurrent());
}

TEST(FThread, KeepsItsNameAs8BitText) {
    FThread thread("com.marlgrove.test");
    EXPECT_STREQ(thread.getName().text8(), "com.marlgrove.test");
}

TEST(FThread, RunsOnAThreadOfItsOwnAndIsJoinedAsOftenAsWanted) {
    WaitingThread thread;
    thread.start();
    ASSERT_TRUE(thread.began.wait(kLong));
    EXPECT_TRUE(thread.isStarted());
    EXPECT_TRUE(thread.wasCurrent);
    EXPECT_FALSE(thread.isCurrent());
    EXPECT_FALSE(thread.join(0));
    EXPECT_FALSE(thread.join(30));
    thread.end();
    EXPECT_TRUE(thread.join(0));
    EXPECT_TRUE(thread.join());
    EXPECT_TRUE(thread.isStarted()) << "it never goes back";
}

TEST(FThread, PriorityIsInEffectBeforeTheBodyBegins) {
    WaitingThread thread;
    thread.start();
    ASSERT_TRUE(thread.began.wait(kLong));
    EXPECT_TRUE(thread.priorityWasSet);
    EXPECT_EQ(thread.lastLevel, 2) << "the default level";
}

TEST(FThread, LevelIsKeptForTheStart) {
    WaitingThread thread;
    EXPECT_TRUE(thread.setPriority(1));
    thread.start();
    ASSERT_TRUE(thread.began.wait(kLong));
    EXPECT_EQ(thread.lastLevel, 1);
    EXPECT_TRUE(thread.lastResult);
}

TEST(FThread, LevelThatDoesNotExistIsRefusedByARunningThread) {
    WaitingThread thread;
    thread.start();
    ASSERT_TRUE(thread.began.wait(kLong));
    EXPECT_FALSE(thread.setPriority(6));
    EXPECT_FALSE(thread.setPriority(-1));
    EXPECT_TRUE(thread.setPriority(0));
}

TEST(FThread, LevelThatDoesNotExistIsKeptAndRefusedAtTheStartYetTheThreadRuns) {
    WaitingThread thread;
    EXPECT_TRUE(thread.setPriority(6));
    thread.start();
    EXPECT_TRUE(thread.began.wait(kLong));
    EXPECT_EQ(thread.lastLevel, 6);
    EXPECT_FALSE(thread.lastResult);
}

TEST(FThread, ValueOfALevelDependsOnTheClassOfTheProcess) {
    constexpr std::int32_t inNormalClass[] = {-15, -1, 0, 1, 2, 15};
    constexpr std::int32_t inOtherClass[] = {-15, -2, -1, 0, 1, 15};
    for (std::int32_t level = 0; level <= 5; ++level) {
        EXPECT_EQ(threadPriorityValue(level, 32), inNormalClass[level]) << level;
        for (std::uint32_t other : {128u, 16384u, 32768u}) {
            EXPECT_EQ(threadPriorityValue(level, other), inOtherClass[level]) << level << " in " << other;
        }
    }
    EXPECT_EQ(threadPriorityValue(2, 128), -1) << "the default level in a process of high class";
    EXPECT_EQ(threadPriorityValue(6, 32), std::nullopt);
    EXPECT_EQ(threadPriorityValue(-1, 32), std::nullopt);
}

TEST(FThread, AffinityIsKeptButFalseWithoutAThread) {
    FThread thread("idle");
    EXPECT_FALSE(thread.setCpuAffinity({0, 1, 0}));
    EXPECT_FALSE(thread.setIdealProcessor(0));
}

TEST(FThread, HardAffinityTakesProcessorsOfTheProcessOnly) {
    const std::uint64_t all = platform::processAffinityMask();
    const int first = std::countr_zero(all);
    const int missing = std::countr_one(all);
    WaitingThread thread;
    thread.start();
    EXPECT_TRUE(thread.setCpuAffinity({first, 1, 0}));
    EXPECT_TRUE(thread.setCpuAffinity({first + 64, 1, 0})) << "the index counts modulo 64";
    EXPECT_TRUE(thread.setCpuAffinity({first, 0, 0})) << "any processor: the index doesn't count";
    EXPECT_TRUE(thread.setCpuAffinity({-1, 1, 0}));
    EXPECT_FALSE(thread.setCpuAffinity({-2, 1, 0}));
    if (missing < 64) {
        EXPECT_FALSE(thread.setCpuAffinity({missing, 1, 0}));
    }
}

TEST(FThread, IdealAffinitySetsThePreferenceAndLeavesTheHardMaskAlone) {
    const std::uint64_t all = platform::processAffinityMask();
    if (all >> 63 != 0) {
        GTEST_SKIP() << "this machine has a processor 63, which the ideal form picks";
    }
    WaitingThread thread;
    thread.start();
    ASSERT_TRUE(thread.setCpuAffinity({std::countr_zero(all), 1, 0}));
    EXPECT_TRUE(thread.setCpuAffinity({3, 1, 1}));
    EXPECT_TRUE(thread.setIdealProcessor(3));
    EXPECT_FALSE(thread.setIdealProcessor(65));
    EXPECT_FALSE(thread.setCpuAffinity({-1, 0, 1})) << "there is no preference for none";
    EXPECT_FALSE(thread.setCpuAffinity({-2, 1, 1}));
}

class CountingObserver final : public FThreadObserver {
public:
    void threadCreated(FThread* thread) override { created.push_back(thread); }
    void threadDestroyed(FThread* thread) override { destroyed.push_back(thread); }

    std::vector<FThread*> created;
    std::vector<FThread*> destroyed;
};

TEST(FThread, ObserverIsToldOfEachObject) {
    CountingObserver observer;
    setThreadObserver(&observer);
    auto thread = std::make_unique<FThread>("watched");
    EXPECT_EQ(observer.created, std::vector<FThread*>{thread.get()});
    EXPECT_TRUE(observer.destroyed.empty());
    thread.reset();
    EXPECT_EQ(observer.destroyed, observer.created);
    setThreadObserver(nullptr);
    FThread unwatched("unwatched");
    EXPECT_EQ(observer.created.size(), 1u);
}

TEST(FThread, BodyMayDeleteItsOwnObject) {
    class SelfDeleting : public FThread {
    public:
        explicit SelfDeleting(platform::Semaphore& gone) : FThread("own end"), gone_(gone) {}
        ~SelfDeleting() override { gone_.release(1); }
        std::uint32_t run() override {
            delete this;
            return 0;
        }

    private:
        platform::Semaphore& gone_;
    };
    platform::Semaphore gone{0};
    (new SelfDeleting(gone))->start();
    EXPECT_TRUE(gone.wait(kLong));
}

TEST(FThread, ObjectMayGoWhileTheBodyRuns) {
    struct Shared {
        platform::Semaphore began{0};
        platform::Semaphore mayEnd{0};
        platform::Semaphore ended{0};
    };
    class Independent : public FThread {
    public:
        explicit Independent(std::shared_ptr<Shared> shared) : FThread("independent"), shared_(std::move(shared)) {}
        std::uint32_t run() override {
            const std::shared_ptr<Shared> kept = shared_;
            kept->began.release(1);
            kept->mayEnd.wait(platform::kNoTimeLimit);
            kept->ended.release(1);
            return 0;
        }

    private:
        std::shared_ptr<Shared> shared_;
    };
    const auto shared = std::make_shared<Shared>();
    {
        Independent thread(shared);
        thread.start();
        ASSERT_TRUE(shared->began.wait(kLong));
    }
    shared->mayEnd.release(1);
    EXPECT_TRUE(shared->ended.wait(kLong));
}

TEST(FThread, TerminatedRunsNoMoreAndHasNoHandle) {
    static std::atomic<long> steps;
    steps = 0;
    class Endless : public FThread {
    public:
        Endless() : FThread("endless") {}
        std::uint32_t run() override {
            for (;;) {
                ++steps;
                sleep(1);
            }
        }
    };
    Endless thread;
    thread.start();
    ASSERT_TRUE(testing_support::eventually([] { return steps > 0; }));
    thread.terminate();
    EXPECT_FALSE(thread.getHandle());
    EXPECT_TRUE(thread.join(0)) << "there is nothing to wait for";
    // The signal may take a moment to arrive; from some moment on there are no more steps.
    EXPECT_TRUE(testing_support::eventually([] {
        const long before = steps;
        FThread::sleep(30);
        return steps == before;
    }));
    EXPECT_TRUE(thread.setPriority(2)) << "without a handle the level is only kept";
}

} // namespace
} // namespace tessera
