// The wish that a program end, as the console brings it.
#include "platform/InterruptRequest.h"

#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <windows.h>

namespace tessera::platform {
namespace {

// All programs of a console hear of the same wish, so this one gets a console of its own.
bool takeOwnConsole() {
    FreeConsole();
    return AllocConsole() != FALSE;
}

bool interruptThisProcess() {
    return GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) != FALSE;
}

TEST(InterruptRequestWindows, IsNotedTheFirstTime) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_FALSE(interruptRequested());
    EXPECT_EXIT(
        {
            noteInterrupts();
            const bool noted = takeOwnConsole() && interruptThisProcess() &&
                               testing_support::eventually([] { return interruptRequested(); });
            std::_Exit(noted ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(InterruptRequestWindows, EndsTheProcessTheSecondTime) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    constexpr int kLived = 1;
    EXPECT_EXIT(
        {
            noteInterrupts();
            takeOwnConsole();
            interruptThisProcess();
            testing_support::eventually([] { return interruptRequested(); });
            interruptThisProcess();
            Sleep(20'000);
            std::_Exit(kLived);
        },
        // With which code a process ends so, isn't told.
        [](int code) { return code != kLived; }, "");
}

} // namespace
} // namespace tessera::platform
