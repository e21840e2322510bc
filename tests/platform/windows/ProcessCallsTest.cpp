// Processes and the watch for their end: which calls of the system they are, with which arguments, and what is given
// back when one of them fails.
#include "platform/ProcessEndWatch.h"
#include "platform/Processes.h"
#include "support/HelperProcess.h"
#include "support/windows/OpenHandles.h"
#include "support/windows/SystemCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include <string>

namespace tessera::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::expectNoHandleLeftBy;
using testing_support::HelperProcess;
using testing_support::SystemCalls;

class ProcessCalls : public testing::Test {
protected:
    ProcessCalls() { helper_.hear(); }

    HelperProcess helper_{PROCESS_HELPER, {"lines"}};
    const std::string id_ = std::to_string(helper_.id());
};

TEST_F(ProcessCalls, AProgramIsStartedByOneQuotedLineInTheNormalClass) {
    SystemCalls calls;
    Process process = Process::start("C:\\no such\\program.exe", {"--tesx", "a \"b\" c", ""});
    EXPECT_FALSE(process);
    EXPECT_THAT(
        calls.take(),
        ElementsAre("CreateProcessW(null, \"\"C:\\no such\\program.exe\" \"--tesx\" \"a \"b\" c\" \"\"\", null, "
                    "null, 0, 32, null, null, (104), ...)"));
    process = Process::start(PROCESS_HELPER, {"exit"});
    EXPECT_TRUE(process);
    EXPECT_THAT(calls.take({"CloseHandle"}), ElementsAre("CloseHandle(...)")) << "that of its first thread";
}

TEST_F(ProcessCalls, AnythingButAResultOfOneIsNoStart) {
    SystemCalls calls;
    calls.answer("CreateProcessW", 2);
    EXPECT_FALSE(Process::start(PROCESS_HELPER, {"exit"}));
    EXPECT_THAT(calls.take({"CloseHandle"}), IsEmpty());
}

TEST_F(ProcessCalls, AProcessIsOpenedWithAllRights) {
    SystemCalls calls;
    Process process = Process::open(helper_.id());
    EXPECT_THAT(calls.take(), ElementsAre("OpenProcess(2097151, 0, " + id_ + ")"));
    EXPECT_TRUE(process.isRunning());
    EXPECT_THAT(calls.take(), ElementsAre("WaitForSingleObject(..., 0)"));
    for (const DWORD notEnded : {DWORD{WAIT_TIMEOUT}, WAIT_FAILED}) {
        calls.answer("WaitForSingleObject", static_cast<std::intptr_t>(notEnded));
        EXPECT_TRUE(process.isRunning());
    }
    calls.take();
    process.kill();
    EXPECT_THAT(calls.take(), ElementsAre("TerminateProcess(..., 0)", "CloseHandle(...)"));
}

TEST_F(ProcessCalls, ANameIsAskedForWithTheTwoRightsThatItTakes) {
    SystemCalls calls;
    EXPECT_NE(processBaseName(helper_.id()), "");
    EXPECT_THAT(calls.take(), ElementsAre("OpenProcess(1040, 0, " + id_ + ")",
                                          "K32GetModuleBaseNameW(..., null, ..., 260)", "CloseHandle(...)"));
    calls.answer("K32GetModuleBaseNameW", 0);
    EXPECT_EQ(processBaseName(helper_.id()), "");
    EXPECT_THAT(calls.take({"CloseHandle"}), ElementsAre("CloseHandle(...)"));
    ownBaseName();
    EXPECT_THAT(calls.take(), ElementsAre("K32GetModuleBaseNameW(-1, null, ..., 260)"));
}

TEST_F(ProcessCalls, ProcessesAreFoundInOneSnapshot) {
    SystemCalls calls;
    findProcess([](int, std::string_view) { return true; });
    EXPECT_THAT(calls.take(),
                ElementsAre("CreateToolhelp32Snapshot(2, 0)", "Process32FirstW(..., (568))", "CloseHandle(...)"));
    calls.answer("CreateToolhelp32Snapshot", -1);
    EXPECT_EQ(findProcess([](int, std::string_view) { return true; }), -1);
    EXPECT_THAT(calls.take(), ElementsAre("CreateToolhelp32Snapshot(2, 0)"));
}

TEST_F(ProcessCalls, AnEndIsWaitedForOnceWithoutLimitAndTheWaitTakenBackToItsEnd) {
    SystemCalls calls;
    ProcessEndWatch watch;
    ASSERT_TRUE(watch.start(helper_.id(), [] {}));
    EXPECT_THAT(calls.take(), ElementsAre("OpenProcess(2097151, 0, " + id_ + ")",
                                          "RegisterWaitForSingleObject(..., ..., ..., ..., 4294967295, 8)"));
    const std::uintptr_t process = calls.argument("RegisterWaitForSingleObject", 1);
    watch.stop();
    EXPECT_EQ(calls.argument("CloseHandle", 0), process);
    EXPECT_THAT(calls.take({"UnregisterWaitEx", "CloseHandle"}),
                ElementsAre("UnregisterWaitEx(..., -1)", "CloseHandle(...)"));
    watch.stop();
    EXPECT_THAT(calls.take(), IsEmpty());
}

TEST_F(ProcessCalls, AWaitThatCannotBeHadGivesTheProcessBack) {
    SystemCalls calls;
    ProcessEndWatch watch;
    calls.answer("RegisterWaitForSingleObject", 0);
    EXPECT_FALSE(watch.start(helper_.id(), [] {}));
    EXPECT_THAT(calls.take({"CloseHandle"}), ElementsAre("CloseHandle(...)"));
    watch.stop();
    EXPECT_THAT(calls.take(), IsEmpty());
    calls.answer("OpenProcess", 0);
    EXPECT_FALSE(watch.start(helper_.id(), [] {}));
    EXPECT_THAT(calls.take({"RegisterWaitForSingleObject"}), IsEmpty());
}

TEST_F(ProcessCalls, WatchesLeaveNoHandleBehind) {
    const auto useAll = [this] {
        ProcessEndWatch stopped;
        stopped.start(helper_.id(), [] {});
        stopped.start(helper_.id(), [] {});
        stopped.stop();
        ProcessEndWatch gone;
        gone.start(helper_.id(), [] {});
    };
    expectNoHandleLeftBy(useAll);
}

} // namespace
} // namespace tessera::platform
