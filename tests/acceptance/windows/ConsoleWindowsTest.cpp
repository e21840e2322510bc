// The programs with a console in front of them.
#include "platform/KnownFolders.h"
#include "platform/windows/WideText.h"
#include "support/SetAside.h"
#include "support/SystemFolders.h"
#include "support/windows/OwnConsole.h"

namespace tessera::acceptance {
namespace {

using testing_support::OwnConsole;

// The exit code.
DWORD runIn(const OwnConsole& console, const std::string& commandLine) {
    std::wstring line = platform::wideText(commandLine);
    STARTUPINFOW setup = {};
    setup.cb = sizeof setup;
    setup.dwFlags = STARTF_USESTDHANDLES;
    setup.hStdOutput = setup.hStdError = console.screen();
    PROCESS_INFORMATION started = {};
    EXPECT_TRUE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &setup, &started));
    WaitForSingleObject(started.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(started.hProcess, &code);
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    return code;
}

TEST(ProgramsConsole, LettersThatTheConsolesCodePageLacksAreShown) {
    const testing_support::SetAside settings(testing_support::pathOfFolder(platform::KnownFolder::userData) /
                                             "Marlgrove" / "tesx-host");
    const OwnConsole console;
    EXPECT_EQ(runIn(console, "\"" TESX_HOST "\" --no-module -c \"\u00fcb\u017c\""), 1U);
    EXPECT_NE(console.text().find(L"\"\u00fcb\u017c\""), std::wstring::npos) << platform::utf8Of(console.text());
    EXPECT_EQ(runIn(console, "\"" TESX_PEER "\" --print-script --editor \"\u00e9dit\u017c {file}\""), 0U);
    EXPECT_NE(console.text().find(L"<Argument>\u00e9dit\u017c {file}</Argument>"), std::wstring::npos)
        << platform::utf8Of(console.text());
    EXPECT_EQ(GetConsoleOutputCP(), OwnConsole::kCodePage);
}

} // namespace
} // namespace tessera::acceptance
