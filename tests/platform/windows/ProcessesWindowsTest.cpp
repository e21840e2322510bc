#include "platform/Processes.h"

#include "support/Eventually.h"
#include "support/FinishedReport.h"
#include "support/HelperProcess.h"
#include "support/ScratchFolder.h"
#include "support/windows/OpenHandles.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <string>

namespace tessera::platform {
namespace {

using testing_support::eventually;
using testing_support::expectNoHandleLeftBy;
using testing_support::HelperProcess;
using testing_support::ScratchFolder;

// What the helper writes about itself when it's started so.
std::string reportOf(const ScratchFolder& scratch, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"report", (scratch / "report").string()});
    EXPECT_TRUE(Process::start(PROCESS_HELPER, arguments));
    return testing_support::finishedReport(scratch, "report");
}

TEST(ProcessesWindows, EveryWordOfTheCommandLineStandsInQuotesAndQuotesWithinAreNotEscaped) {
    const ScratchFolder scratch;
    const std::string report = reportOf(scratch, {"plain", "", "a \"b\" c", "\xc3\xa4\xf0\x9f\x8e\xb5"});
    const std::string line = std::string("command line=\"") + PROCESS_HELPER + "\" \"report\" \"" +
                             (scratch / "report").string() +
                             "\" \"plain\" \"\" \"a \"b\" c\" \"\xc3\xa4\xf0\x9f\x8e\xb5\"\n";
    EXPECT_NE(report.find(line), std::string::npos) << report;
    EXPECT_NE(report.find("argument=a b c\n"), std::string::npos) << report;
}

TEST(ProcessesWindows, AChildRunsInTheNormalClassWhateverThisOneRunsIn) {
    const DWORD before = GetPriorityClass(GetCurrentProcess());
    SetPriorityClass(GetCurrentProcess(), BELOW_NORMAL_PRIORITY_CLASS);
    const ScratchFolder scratch;
    const std::string report = reportOf(scratch, {});
    SetPriorityClass(GetCurrentProcess(), before);
    EXPECT_NE(report.find("priority class=32\n"), std::string::npos) << report;
}

TEST(ProcessesWindows, AChildInheritsNoHandle) {
    HANDLE inheritable = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    SetHandleInformation(inheritable, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    // Far behind whatever the child opens for itself.
    HANDLE distant = inheritable;
    for (int i = 0; i < 2000; ++i) {
        DuplicateHandle(GetCurrentProcess(), inheritable, GetCurrentProcess(), &distant, 0, TRUE,
                        DUPLICATE_SAME_ACCESS);
    }
    SetEnvironmentVariableW(L"TESX_TEST_HANDLE", std::to_wstring(reinterpret_cast<std::uintptr_t>(distant)).c_str());
    const ScratchFolder scratch;
    const std::string report = reportOf(scratch, {});
    SetEnvironmentVariableW(L"TESX_TEST_HANDLE", nullptr);
    EXPECT_NE(report.find("handle open=0\n"), std::string::npos) << report;
}

TEST(ProcessesWindows, NameWithoutAFolderIsSearchedFor) {
    // Beside this program, and with the extension that the system adds.
    EXPECT_TRUE(Process::start("process_helper", {"exit"}));
}

TEST(ProcessesWindows, ManyChildrenLeaveNoHandleBehind) {
    expectNoHandleLeftBy([] { Process::start(PROCESS_HELPER, {"exit"}); });
}

TEST(ProcessesWindows, AskingForNamesAndProcessesLeavesNoHandleBehind) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    helper.hear();
    const auto askAll = [&] {
        processBaseName(helper.id());
        processBaseName(-1);
        findProcess([](int, std::string_view) { return false; });
        Process::open(helper.id());
    };
    expectNoHandleLeftBy(askAll);
}

TEST(ProcessesWindows, AProgramWithANameOutsideTheCodePageIsStartedAndNamed) {
    const ScratchFolder scratch;
    const std::filesystem::path copy = scratch.path() / u8"\u00e4\u65e5 \U0001f3b5.exe";
    std::filesystem::copy_file(PROCESS_HELPER, copy);
    Process process = Process::start(copy.string(), {"wait"});
    ASSERT_TRUE(process);
    EXPECT_TRUE(
        eventually([&] { return processBaseName(process.id()) == "\xc3\xa4\xe6\x97\xa5 \xf0\x9f\x8e\xb5.exe"; }));
    process.kill();
}

} // namespace
} // namespace tessera::platform
