// What the Windows side alone promises of threads: the system's own priority values and classes, and its objects on
// every thread.
#include "platform/ProcessPriority.h"
#include "platform/ThreadSlots.h"
#include "platform/Threads.h"

#include "platform/SleepingThread.h"

#include <gtest/gtest.h>

#include <objbase.h>
#include <windows.h>

namespace tessera::platform {
namespace {

int priorityOf(const SleepingThread& thread) {
    const HANDLE opened = OpenThread(THREAD_QUERY_INFORMATION, FALSE, thread.handle.id());
    const int value = GetThreadPriority(opened);
    CloseHandle(opened);
    return value;
}

TEST(ThreadsWindows, PriorityIsTheSystemsOwnValue) {
    SleepingThread thread;
    for (const int value : {-15, -2, -1, 1, 2, 15, 0}) {
        EXPECT_TRUE(thread.handle.setPriority(value)) << value;
        EXPECT_EQ(priorityOf(thread), value);
    }
}

TEST(ThreadsWindows, ClassIsThatOfTheProcess) {
    for (const std::uint32_t word : {kBelowNormalClass, kAboveNormalClass, kHighClass, kNormalClass}) {
        EXPECT_TRUE(setProcessClass(word)) << word;
        EXPECT_EQ(processClass(), word);
        EXPECT_EQ(GetPriorityClass(GetCurrentProcess()), word);
    }
}

TEST(ThreadsWindows, ClassesThatNobodyOfOursMayHaveAreRefused) {
    EXPECT_FALSE(setProcessClass(IDLE_PRIORITY_CLASS));
    EXPECT_FALSE(setProcessClass(REALTIME_PRIORITY_CLASS));
    EXPECT_FALSE(setProcessClass(0));
    EXPECT_EQ(processClass(), kNormalClass);
}

TEST(ThreadsWindows, PriorityBoostIsASwitchOfTheProcess) {
    EXPECT_TRUE(disablePriorityBoost(true));
    EXPECT_TRUE(disablePriorityBoost(false));
}

TEST(ThreadsWindows, EachMayUseTheSystemsObjects) {
    static HRESULT second;
    ThreadHandle thread = ThreadHandle::createSuspended(
        [](void*) -> std::uint32_t {
            second = CoInitialize(nullptr);
            CoUninitialize();
            return 0;
        },
        nullptr);
    thread.resume();
    ASSERT_TRUE(thread.wait(20'000));
    EXPECT_EQ(second, S_FALSE) << "it has been made ready before";
}

TEST(ThreadsWindows, OpenedThreadMayBeGivenAPriority) {
    SleepingThread thread;
    const auto opened = reinterpret_cast<HANDLE>(openThread(thread.handle.id()));
    ASSERT_NE(opened, nullptr);
    EXPECT_TRUE(SetThreadPriority(opened, -1));
    EXPECT_EQ(priorityOf(thread), -1);
    EXPECT_TRUE(CloseHandle(opened));
    EXPECT_EQ(openThread(0), 0u);
}

TEST(ThreadsWindows, SlotsAreNeverNumberZero) {
    std::vector<ThreadSlot> slots;
    for (int i = 0; i < 100; ++i) {
        slots.push_back(allocateThreadSlot());
        EXPECT_NE(slots.back(), kNoThreadSlot);
        EXPECT_EQ(threadSlotValue(slots.back()), nullptr);
    }
    for (const ThreadSlot slot : slots) {
        freeThreadSlot(slot);
    }
    EXPECT_FALSE(setThreadSlotValue(kNoThreadSlot, &slots));
    EXPECT_EQ(threadSlotValue(kNoThreadSlot), nullptr);
}

} // namespace
} // namespace tessera::platform
