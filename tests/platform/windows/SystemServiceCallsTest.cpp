// Timers, windows, names, libraries and the debugger's output: which calls of the system they are, with which
// arguments.
#include "platform/DebugOutput.h"
#include "platform/DynamicLibrary.h"
#include "platform/Identity.h"
#include "platform/InterruptRequest.h"
#include "platform/TimerMessages.h"
#include "platform/WindowActivation.h"
#include "support/windows/SystemCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include <string>

namespace tessera::platform {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::SystemCalls;

TEST(SystemServiceCalls, ATimerHasNoWindowAndNoNumberOfOurs) {
    SystemCalls calls;
    const std::uintptr_t timer = startTimerMessages(120, [](std::uintptr_t) {});
    EXPECT_THAT(calls.take(), ElementsAre("SetTimer(null, 0, 120, ...)"));
    EXPECT_NE(timer, 0u);
    stopTimerMessages(timer);
    EXPECT_THAT(calls.take(), ElementsAre("KillTimer(null, " + std::to_string(timer) + ")"));
    calls.answer("SetTimer", 0);
    EXPECT_EQ(startTimerMessages(120, [](std::uintptr_t) {}), 0u);
}

TEST(SystemServiceCalls, AWindowIsFoundByItsClassAloneAndNeitherResultCounts) {
    SystemCalls calls;
    raiseWindow(u"A class that no window has");
    EXPECT_THAT(calls.take(),
                ElementsAre("FindWindowW(\"A class that no window has\", null)", "SetForegroundWindow(null)"));
    calls.answer("FindWindowW", 0x1234);
    calls.answer("SetForegroundWindow", FALSE);
    raiseWindow(u"Qt5QWindowIcon");
    EXPECT_EQ(calls.argument("SetForegroundWindow", 0), 0x1234u);
}

TEST(SystemServiceCalls, NamesAreAskedForWith256Units) {
    SystemCalls calls;
    EXPECT_NE(userName(), "");
    EXPECT_NE(computerName(), "");
    EXPECT_THAT(calls.take(), ElementsAre("GetUserNameW(..., [256])", "GetComputerNameW(..., [256])"));
    calls.answer("GetUserNameW", FALSE);
    EXPECT_EQ(userName(), "");
    calls.answer("GetComputerNameW", FALSE);
    EXPECT_EQ(computerName(), "");
}

TEST(SystemServiceCalls, TheVersionComesInTheSmallRecord) {
    SystemCalls calls;
    EXPECT_NE(operatingSystem().major, 0u);
    EXPECT_THAT(calls.take(), ElementsAre("GetVersionExW((276))"));
    calls.answer("GetVersionExW", FALSE);
    EXPECT_EQ(operatingSystem().major, 0u);
}

TEST(SystemServiceCalls, TheModulesPathIsAskedForWith1024Units) {
    SystemCalls calls;
    EXPECT_NE(modulePath(), u"");
    EXPECT_THAT(calls.take({"GetModuleFileNameW"}), ElementsAre("GetModuleFileNameW(..., ..., 1024)"));
    EXPECT_EQ(calls.argument("GetModuleFileNameW", 0), reinterpret_cast<std::uintptr_t>(GetModuleHandleW(nullptr)));
    for (const std::intptr_t fetched : {0, 1024}) {
        calls.answer("GetModuleFileNameW", fetched);
        EXPECT_EQ(modulePath(), u"") << "none, or cut";
    }
}

TEST(SystemServiceCalls, ALibraryIsLoadedByItsPathAndGivenBack) {
    SystemCalls calls;
    EXPECT_FALSE(DynamicLibrary::load("C:\\no such\\module.shlb"));
    EXPECT_THAT(calls.take({"LoadLibraryW", "FreeLibrary"}), ElementsAre("LoadLibraryW(\"C:\\no such\\module.shlb\")"));
    {
        const auto library = DynamicLibrary::load(TINY_LIBRARY);
        ASSERT_TRUE(library);
        calls.take();
        library->symbol("GetPluginFactory");
        EXPECT_THAT(calls.take(), ElementsAre("GetProcAddress(..., \"GetPluginFactory\")"));
    }
    EXPECT_THAT(calls.take(), Contains("FreeLibrary(...)"));
}

TEST(SystemServiceCalls, TheFirstWishForAnEndIsNotedAndTheSecondIsTheSystems) {
    SystemCalls calls;
    noteInterrupts();
    EXPECT_THAT(calls.take(), ElementsAre("SetConsoleCtrlHandler(..., 1)"));
    const auto wish = reinterpret_cast<PHANDLER_ROUTINE>(calls.argument("SetConsoleCtrlHandler", 0));
    EXPECT_FALSE(interruptRequested());
    // The system ends the process as soon as the function comes back, so it doesn't.
    calls.answer("Sleep", 0);
    EXPECT_TRUE(wish(CTRL_CLOSE_EVENT));
    EXPECT_THAT(calls.take(), ElementsAre("Sleep(4294967295)"));
    EXPECT_TRUE(interruptRequested());
    EXPECT_FALSE(wish(CTRL_C_EVENT));
    EXPECT_THAT(calls.take(), IsEmpty());
    SetConsoleCtrlHandler(wish, FALSE);
}

TEST(SystemServiceCalls, DebuggersSeeTheText) {
    SystemCalls calls;
    writeDebugOutput("a text\n");
    EXPECT_THAT(calls.take({"OutputDebugStringA"}), ElementsAre("OutputDebugStringA(\"a text\n\")"));
}

} // namespace
} // namespace tessera::platform
