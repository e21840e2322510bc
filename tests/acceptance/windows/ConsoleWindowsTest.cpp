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
    setup.hStdInput = console.keyboard();
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

class ProgramsConsole : public testing::Test {
protected:
    const testing_support::SetAside settings_{testing_support::pathOfFolder(platform::KnownFolder::userData) /
                                              "Marlgrove" / "tesx-host"};
    const OwnConsole console_;
};

TEST_F(ProgramsConsole, LettersThatTheConsolesCodePageLacksAreShown) {
    EXPECT_EQ(runIn(console_, "\"" TESX_HOST "\" --no-module -c \"\u00fcb\u017c\""), 1U);
    EXPECT_NE(console_.text().find(L"\"\u00fcb\u017c\""), std::wstring::npos) << platform::utf8Of(console_.text());
    EXPECT_EQ(runIn(console_, "\"" TESX_PEER "\" --print-script --editor \"\u00e9dit\u017c {file}\""), 0U);
    EXPECT_NE(console_.text().find(L"<Argument>\u00e9dit\u017c {file}</Argument>"), std::wstring::npos)
        << platform::utf8Of(console_.text());
    EXPECT_EQ(GetConsoleOutputCP(), OwnConsole::kCodePage);
}

TEST_F(ProgramsConsole, LettersThatTheConsolesCodePageLacksCanBeTyped) {
    // The last one takes two units.
    console_.type(L"\u00fcb\u017c\U0001f3b5\rquit\r");
    EXPECT_EQ(runIn(console_, "\"" TESX_HOST "\" --no-module --keep-going"), 1U);
    EXPECT_NE(console_.text().find(L"\"\u00fcb\u017c\U0001f3b5\""), std::wstring::npos)
        << platform::utf8Of(console_.text());
}

TEST_F(ProgramsConsole, NoLetterOfALongLineIsTorn) {
    // Longer than what is read at once, which is an even number of units.
    std::wstring line(1001, L'x');
    for (int i = 0; i < 40; ++i) {
        line += L"\U0001f3b5";
    }
    console_.type(line + L"\rquit\r");
    EXPECT_EQ(runIn(console_, "\"" TESX_HOST "\" --no-module --keep-going"), 1U);
    EXPECT_NE(console_.text().find(L"\"" + line + L"\""), std::wstring::npos) << platform::utf8Of(console_.text());
}

TEST_F(ProgramsConsole, CtrlZEndsTheInput) {
    console_.type(L"\x1a\r");
    EXPECT_EQ(runIn(console_, "\"" TESX_HOST "\" --no-module"), 0U);
}

} // namespace
} // namespace tessera::acceptance
