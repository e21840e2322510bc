// FThread and the switches of the process: which calls of the system they come to, in which order.
#include "foundation/threads/FLockError.h"
#include "foundation/threads/FProcessPriority.h"
#include "foundation/threads/FReadWriteLock.h"
#include "foundation/threads/FThread.h"
#include "foundation/threads/FThreadLocal.h"
#include "platform/Semaphore.h"
#include "platform/Threads.h"
#include "support/Counted.h"
#include "support/windows/SystemCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include <bit>
#include <cstdlib>
#include <string>

namespace tessera {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::SystemCalls;

constexpr std::uint32_t kLong = 20'000;

// Sleeps for a millisecond so that its turn can be seen among the calls.
class NapThread : public FThread {
public:
    NapThread() : FThread("nap") {}
    std::uint32_t run() override {
        sleep(1);
        return 0;
    }
};

// Runs until its object goes.
class WaitingThread : public FThread {
public:
    WaitingThread() : FThread("waiting") {}
    ~WaitingThread() override {
        end_.release(1);
        join();
    }
    std::uint32_t run() override {
        end_.wait(platform::kNoTimeLimit);
        return 0;
    }

private:
    platform::Semaphore end_{0};
};

class FThreadCalls : public testing::Test {
protected:
    void SetUp() override {
        thread_.start();
        ASSERT_TRUE(thread_.getHandle());
        calls_.take();
    }
    std::vector<std::string> takeOrders() {
        return calls_.take({"SetThreadPriority", "SetThreadAffinityMask", "SetThreadIdealProcessor"});
    }
    bool isTold(const FCpuAffinity& affinity) { return thread_.setCpuAffinity(affinity); }

    const std::uint64_t all_ = platform::processAffinityMask();
    const std::int32_t first_ = std::countr_zero(all_);
    SystemCalls calls_;
    WaitingThread thread_;
};

TEST(FThreadStart, SetsThePriorityBeforeTheFirstInstruction) {
    NapThread thread;
    thread.setPriority(1);
    SystemCalls calls;
    thread.start();
    ASSERT_TRUE(thread.join(kLong));
    EXPECT_THAT(
        calls.take({"CreateThread", "SetThreadPriority", "ResumeThread", "CoInitialize", "Sleep", "CoUninitialize"}),
        ElementsAre("CreateThread(null, 0, ..., ..., 4, [0])", "SetThreadPriority(..., -1)", "ResumeThread(...)",
                    "CoInitialize(null)", "Sleep(1)", "CoUninitialize()"));
}

TEST(FThreadStart, WithoutAThreadJoinIsTrueAtOnce) {
    FThread thread("none");
    SystemCalls calls;
    calls.answer("CreateThread", 0);
    thread.start();
    EXPECT_TRUE(thread.isStarted());
    EXPECT_TRUE(thread.join());
    EXPECT_THAT(calls.take({"WaitForSingleObject"}), IsEmpty());
}

TEST(FThreadEnd, ReleasesTheThreadsValuesBeforeTheSystemsObjectsGo) {
    class Value final : public test::Counted<IBaseUnknown> {
    public:
        ~Value() override { platform::sleepFor(2); }
    };
    static FThreadLocal slot;
    ASSERT_TRUE(slot.create());
    class Holder : public FThread {
    public:
        Holder() : FThread("holder") {}
        std::uint32_t run() override {
            auto* value = new Value;
            slot.set(value);
            value->release();
            return 0;
        }
    };
    Holder thread;
    SystemCalls calls;
    thread.start();
    ASSERT_TRUE(thread.join(kLong));
    EXPECT_THAT(calls.take({"CoInitialize", "Sleep", "CoUninitialize"}),
                ElementsAre("CoInitialize(null)", "Sleep(2)", "CoUninitialize()"));
    slot.destroy();
}

TEST_F(FThreadCalls, TheLevelIsTakenFromTheTableOfTheProcesssClass) {
    thread_.setPriority(2);
    EXPECT_THAT(takeOrders(), ElementsAre("SetThreadPriority(..., 0)"));
    calls_.answer("GetPriorityClass", 128);
    thread_.setPriority(2);
    EXPECT_THAT(takeOrders(), ElementsAre("SetThreadPriority(..., -1)"));
    thread_.setPriority(5);
    EXPECT_THAT(takeOrders(), ElementsAre("SetThreadPriority(..., 15)"));
    EXPECT_FALSE(thread_.setPriority(6));
    EXPECT_THAT(takeOrders(), IsEmpty());
}

TEST_F(FThreadCalls, AHardProcessorClearsTheIdealOneFirst) {
    EXPECT_TRUE(isTold({first_, 1, 0}));
    EXPECT_THAT(takeOrders(), ElementsAre("SetThreadIdealProcessor(..., 64)",
                                          "SetThreadAffinityMask(..., " + std::to_string(all_ & (~all_ + 1)) + ")"));
    EXPECT_TRUE(isTold({first_, 0, 0}));
    EXPECT_THAT(takeOrders(), ElementsAre("SetThreadIdealProcessor(..., 64)",
                                          "SetThreadAffinityMask(..., " + std::to_string(all_) + ")"));
    EXPECT_FALSE(isTold({-2, 1, 0}));
    EXPECT_THAT(takeOrders(), ElementsAre("SetThreadIdealProcessor(..., 64)"));
    if (~all_ != 0) {
        EXPECT_FALSE(isTold({std::countr_one(all_ >> first_) + first_, 1, 0}));
        EXPECT_THAT(takeOrders(), ElementsAre("SetThreadIdealProcessor(..., 64)")) << "not of this process";
    }
}

TEST_F(FThreadCalls, AnIdealProcessorLeavesTheHardMaskAlone) {
    if (all_ >> 63 == 0) {
        EXPECT_TRUE(isTold({3, 1, 1}));
        EXPECT_THAT(takeOrders(), ElementsAre("SetThreadIdealProcessor(..., 3)"));
    }
    calls_.answer("GetProcessAffinityMask", FALSE);
    EXPECT_TRUE(isTold({3, 1, 1})) << "without a mask of the process there is only the preference";
    EXPECT_THAT(takeOrders(), ElementsAre("SetThreadIdealProcessor(..., 3)"));
    EXPECT_FALSE(isTold({-2, 1, 1}));
    EXPECT_THAT(takeOrders(), ElementsAre("SetThreadIdealProcessor(..., 4294967294)"));
    EXPECT_FALSE(isTold({0, 0, 1}));
    EXPECT_THAT(takeOrders(), ElementsAre("SetThreadAffinityMask(..., " + std::to_string(all_) + ")",
                                          "SetThreadIdealProcessor(..., 4294967295)"))
        << "any processor: the mask of the process";
}

TEST(FProcessPriorityCalls, TheBoostIsSwitchedByWhatDisablesIt) {
    SystemCalls calls;
    EXPECT_TRUE(setPriorityBoost(true));
    EXPECT_THAT(calls.take({"SetProcessPriorityBoost"}), ElementsAre("SetProcessPriorityBoost(-1, 0)"));
    EXPECT_TRUE(setPriorityBoost(false));
    EXPECT_THAT(calls.take({"SetProcessPriorityBoost"}), ElementsAre("SetProcessPriorityBoost(-1, 1)"));
}

TEST(FProcessPriorityCalls, TheFourClasses) {
    SystemCalls calls;
    for (int i = 0; i < 4; ++i) {
        calls.answer("SetPriorityClass", TRUE);
    }
    EXPECT_TRUE(setProcessHighPriority(true));
    EXPECT_TRUE(setProcessHighPriority(false));
    EXPECT_TRUE(setProcessAboveNormal(true));
    EXPECT_TRUE(setProcessAboveNormal(false));
    EXPECT_THAT(calls.take(), ElementsAre("SetPriorityClass(-1, 128)", "SetPriorityClass(-1, 32)",
                                          "SetPriorityClass(-1, 32768)", "SetPriorityClass(-1, 16384)"));
}

TEST(FReadWriteLockCalls, TheFastFormTakesTheEntriesAndTheSlowOneNone) {
    SystemCalls calls;
    const FReadWriteLock slow(false);
    EXPECT_THAT(calls.take({"GetProcAddress"}), IsEmpty());
    const FReadWriteLock fast(true);
    EXPECT_EQ(calls.take({"GetProcAddress"}).size(), 7u);
    const FReadWriteLock another(true);
    EXPECT_THAT(calls.take({"GetProcAddress"}), IsEmpty());
}

// In a process of its own, which hasn't looked the entries up yet.
TEST(FReadWriteLockCalls, AFastLockReportsWhatTheSystemLacks) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    static std::string reported;
    EXPECT_EXIT(
        {
            SystemCalls calls;
            for (int i = 0; i < 7; ++i) {
                calls.answer("GetProcAddress", 0);
            }
            setLockErrorHandler([](int code) { reported += std::to_string(code) + " "; });
            FReadWriteLock lock(true);
            reported += "made ";
            lock.lockRead();
            reported += "taken ";
            lock.unlockRead();
            reported += lock.tryLockRead() || lock.tryLockWrite() ? "tried" : "refused";
            std::_Exit(reported == "-1 made -1 taken -1 refused" ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace tessera
