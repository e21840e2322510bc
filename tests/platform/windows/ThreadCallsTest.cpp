// Threads and the process's class: which calls of the system they are, with which arguments.
#include "platform/ProcessPriority.h"
#include "platform/Semaphore.h"
#include "platform/Threads.h"
#include "support/windows/OpenHandles.h"
#include "support/windows/SystemCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include <csignal>
#include <cstdlib>

namespace tessera::platform {
namespace {

using testing::ElementsAre;
using testing_support::expectNoHandleLeftBy;
using testing_support::SystemCalls;

constexpr std::uint32_t kLong = 20'000;

std::uint32_t nothing(void*) {
    return 7;
}

TEST(ThreadCalls, AThreadIsMadeSuspendedWithTheDefaultStackAndBringsTheSystemsObjectsUpAroundItsBody) {
    SystemCalls calls;
    ThreadHandle thread = ThreadHandle::createSuspended(
        [](void*) -> std::uint32_t {
            sleepFor(1);
            return 0;
        },
        nullptr);
    EXPECT_THAT(calls.take(), ElementsAre("CreateThread(null, 0, ..., ..., 4, [0])"));
    thread.resume();
    ASSERT_TRUE(thread.wait(kLong));
    EXPECT_THAT(calls.take({"CoInitialize", "Sleep", "CoUninitialize"}),
                ElementsAre("CoInitialize(null)", "Sleep(1)", "CoUninitialize()"));
}

TEST(ThreadCalls, WhereTheSystemsObjectsCannotBeHadTheyAreNotGivenBack) {
    SystemCalls calls;
    calls.answer("CoInitialize", static_cast<std::intptr_t>(RPC_E_CHANGED_MODE));
    ThreadHandle thread = ThreadHandle::createSuspended(nothing, nullptr);
    thread.resume();
    ASSERT_TRUE(thread.wait(kLong));
    EXPECT_THAT(calls.take({"CoInitialize", "CoUninitialize"}), ElementsAre("CoInitialize(null)"));
}

TEST(ThreadCalls, AThreadThatCannotBeMadeIsAnEmptyHandle) {
    SystemCalls calls;
    calls.answer("CreateThread", 0);
    EXPECT_FALSE(ThreadHandle::createSuspended(nothing, nullptr));
}

TEST(ThreadCalls, TheExitCodeIsTheBodysResult) {
    ThreadHandle thread = ThreadHandle::createSuspended(nothing, nullptr);
    HANDLE same = OpenThread(THREAD_QUERY_INFORMATION | SYNCHRONIZE, FALSE, thread.id());
    thread.resume();
    ASSERT_EQ(WaitForSingleObject(same, kLong), WAIT_OBJECT_0);
    DWORD code = 0;
    GetExitCodeThread(same, &code);
    EXPECT_EQ(code, 7u);
    CloseHandle(same);
}

TEST(ThreadCalls, OrdersGoToTheThreadAsTheyAre) {
    ThreadHandle thread = ThreadHandle::createSuspended(nothing, nullptr);
    SystemCalls calls;
    thread.setPriority(-15);
    thread.setAffinity(1);
    thread.setIdealProcessor(64);
    EXPECT_THAT(calls.take({"SetThreadPriority", "SetThreadAffinityMask", "SetThreadIdealProcessor"}),
                ElementsAre("SetThreadPriority(..., -15)", "SetThreadAffinityMask(..., 1)",
                            "SetThreadIdealProcessor(..., 64)"));
    thread.wait(30);
    EXPECT_THAT(calls.take(), ElementsAre("WaitForSingleObject(..., 30)"));
    calls.answer("SetThreadPriority", 0);
    EXPECT_FALSE(thread.setPriority(0));
    calls.answer("SetThreadAffinityMask", 0);
    EXPECT_FALSE(thread.setAffinity(1));
    calls.answer("SetThreadIdealProcessor", 5);
    EXPECT_EQ(thread.setIdealProcessor(3), 5) << "the previous one";
    calls.answer("SetThreadIdealProcessor", -1);
    EXPECT_EQ(thread.setIdealProcessor(3), -1);
    thread.resume();
    thread.wait(kLong);
}

// Of one that sleeps until it is stopped.
ThreadHandle endlessThread() {
    Semaphore began(0);
    ThreadHandle thread = ThreadHandle::createSuspended(
        [](void* semaphore) -> std::uint32_t {
            static_cast<Semaphore*>(semaphore)->release(1);
            sleepFor(kNoTimeLimit);
            return 0;
        },
        &began);
    thread.resume();
    EXPECT_TRUE(began.wait(kLong));
    return thread;
}

TEST(ThreadCalls, TerminationGivesTheThreadCodeZeroAndClosingTheHandleBack) {
    ThreadHandle thread = endlessThread();
    SystemCalls calls;
    EXPECT_TRUE(thread.terminate());
    EXPECT_THAT(calls.take({"TerminateThread"}), ElementsAre("TerminateThread(..., 0)"));
    thread.close();
    EXPECT_THAT(calls.take({"CloseHandle"}), ElementsAre("CloseHandle(...)"));
}

TEST(ThreadCalls, ARefusedTerminationLeavesTheThreadAlone) {
    ThreadHandle thread = endlessThread();
    {
        SystemCalls calls;
        calls.answer("TerminateThread", FALSE);
        EXPECT_FALSE(thread.terminate());
    }
    EXPECT_FALSE(thread.wait(0));
    EXPECT_TRUE(thread.terminate());
}

TEST(ThreadCalls, NoEndOfAThreadLeavesAHandleBehind) {
    // The ones that are never resumed end by themselves.
    expectNoHandleLeftBy([] {
        ThreadHandle ended = ThreadHandle::createSuspended(nothing, nullptr);
        ended.resume();
        ended.wait(kLong);
        ThreadHandle neverResumed = ThreadHandle::createSuspended(nothing, nullptr);
        endlessThread().terminate();
    });
}

TEST(ThreadCalls, ThreadsOfThisProcessAreListedFromOneSnapshot) {
    SystemCalls calls;
    std::uint32_t ids[4];
    listThreads(ids, 4);
    const auto made = calls.take();
    ASSERT_GE(made.size(), 3u);
    EXPECT_EQ(made.front(), "CreateToolhelp32Snapshot(4, 0)");
    EXPECT_EQ(made.at(1), "Thread32First(..., ...)");
    EXPECT_EQ(made.back(), "CloseHandle(...)");
    calls.answer("CreateToolhelp32Snapshot", -1);
    EXPECT_EQ(listThreads(ids, 4), -1);
}

TEST(ThreadCalls, AnotherThreadIsOpenedToSetItsPropertiesThroughALateEntry) {
    SystemCalls calls;
    const auto opened = reinterpret_cast<HANDLE>(openThread(GetCurrentThreadId()));
    EXPECT_NE(opened, nullptr);
    EXPECT_THAT(calls.take(), ElementsAre("GetProcAddress(..., \"OpenThread\")",
                                          "OpenThread(32, 0, " + std::to_string(GetCurrentThreadId()) + ")"));
    EXPECT_EQ(calls.argument("GetProcAddress", 0), reinterpret_cast<std::uintptr_t>(GetModuleHandleW(L"Kernel32")));
    CloseHandle(opened);
    calls.answer("GetProcAddress", 0);
    EXPECT_EQ(openThread(GetCurrentThreadId()), 0u);
}

TEST(ThreadCalls, ABoostIsDisabledThroughALateEntryThatIsLookedUpEachTime) {
    SystemCalls calls;
    EXPECT_TRUE(disablePriorityBoost(true));
    EXPECT_THAT(calls.take(),
                ElementsAre("GetProcAddress(..., \"SetProcessPriorityBoost\")", "SetProcessPriorityBoost(-1, 1)"));
    EXPECT_EQ(calls.argument("GetProcAddress", 0), reinterpret_cast<std::uintptr_t>(GetModuleHandleW(L"Kernel32")));
    EXPECT_TRUE(disablePriorityBoost(false));
    EXPECT_THAT(calls.take(),
                ElementsAre("GetProcAddress(..., \"SetProcessPriorityBoost\")", "SetProcessPriorityBoost(-1, 0)"));
    calls.answer("SetProcessPriorityBoost", 0);
    EXPECT_FALSE(disablePriorityBoost(true));
    calls.answer("GetProcAddress", 0);
    EXPECT_FALSE(disablePriorityBoost(true)) << "a system without the entry";
}

TEST(ThreadCalls, TheClassIsThatOfThisProcess) {
    SystemCalls calls;
    setProcessClass(kNormalClass);
    EXPECT_THAT(calls.take(), ElementsAre("SetPriorityClass(-1, 32)"));
    calls.answer("SetPriorityClass", 0);
    EXPECT_FALSE(setProcessClass(kHighClass));
    calls.answer("GetPriorityClass", 128);
    EXPECT_EQ(processClass(), 128u);
    EXPECT_THAT(calls.take({"GetPriorityClass"}), ElementsAre("GetPriorityClass(-1)"));
}

// The runtime of an older system lacks the entry.
TEST(ThreadCalls, AnAbortIsToldToTheRuntimeThroughALateEntryFirst) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            static SystemCalls calls;
            std::signal(SIGABRT, [](int) {
                const std::vector<std::string> wanted{"GetProcAddress(..., \"_set_abort_behavior\")"};
                std::_Exit(calls.take({"GetProcAddress"}) == wanted ? 0 : 1);
            });
            abortQuietly();
        },
        testing::ExitedWithCode(0), "");
}

TEST(ThreadCalls, SleepingLastsAsLongAsTold) {
    SystemCalls calls;
    sleepFor(3);
    sleepFor(0);
    EXPECT_THAT(calls.take(), ElementsAre("Sleep(3)", "Sleep(0)"));
}

// What a debugger would see.
struct SeenName {
    DWORD words[2];
    std::string name;
    int count;
};
SeenName seen;

LONG CALLBACK noteException(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& told = *exception->ExceptionRecord;
    if (told.ExceptionCode == 0x406d1388 && told.NumberParameters == 3) {
        struct Record {
            DWORD kind;
            const char* name;
            DWORD thread;
            DWORD flags;
        };
        const auto& record = *reinterpret_cast<const Record*>(told.ExceptionInformation);
        seen = {{record.kind, record.thread}, record.name, seen.count + 1};
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

TEST(ThreadCalls, ANameIsToldToDebuggersByAnExceptionThatNobodyElseNotices) {
    void* handler = AddVectoredExceptionHandler(1, noteException);
    {
        SystemCalls calls;
        setCurrentThreadName("com.marlgrove.test");
        EXPECT_THAT(calls.take(), ElementsAre("RaiseException(1080890248, 0, 3, ...)"));
    }
    RemoveVectoredExceptionHandler(handler);
    EXPECT_EQ(seen.count, 1);
    EXPECT_EQ(seen.words[0], 0x1000u);
    EXPECT_EQ(seen.words[1], 0xffffffffu) << "the calling thread";
    EXPECT_EQ(seen.name, "com.marlgrove.test");
}

} // namespace
} // namespace tessera::platform
