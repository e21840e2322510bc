// Bringing a window to the front, with real windows: of this program and of another one.
#include "platform/WindowActivation.h"

#include "platform/Processes.h"
#include "support/Eventually.h"
#include "support/HelperProcess.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <chrono>
#include <string>

namespace tessera::platform {
namespace {

using testing_support::HelperProcess;

constexpr const wchar_t* kPeerClass = L"Qt5QWindowIcon";
constexpr const wchar_t* kOtherClass = L"TesxTestWindow";

// A visible top-level window of this thread, with a class of its own.
class TestWindow {
public:
    TestWindow(const wchar_t* name, const wchar_t* title) : name_(name) {
        WNDCLASSEXW type = {};
        type.cbSize = sizeof type;
        type.lpfnWndProc = DefWindowProcW;
        type.hInstance = GetModuleHandleW(nullptr);
        type.lpszClassName = name;
        RegisterClassExW(&type);
        window_ = CreateWindowExW(0, name, title, WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr,
                                  type.hInstance, nullptr);
        EXPECT_NE(window_, nullptr);
    }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    ~TestWindow() {
        DestroyWindow(window_);
        UnregisterClassW(name_, GetModuleHandleW(nullptr));
    }

    HWND get() const { return window_; }

private:
    const wchar_t* name_;
    HWND window_;
};

// What is sent to this thread's windows is told only while it looks for messages.
template <class Condition>
bool eventually(Condition condition) {
    return testing_support::eventually([&] {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            DispatchMessageW(&message);
        }
        return condition();
    });
}

// Whether the program's next lines hold that one.
bool hearsOf(HelperProcess& helper, const std::string& line) {
    for (int i = 0; i < 5; ++i) {
        if (helper.hear() == line) {
            return true;
        }
    }
    return false;
}

TEST(WindowActivation, BringsTheWindowOfThatClassToTheFrontWhateverItsTitle) {
    const TestWindow peer(kPeerClass, L"Take 1 \u2013 Tessera");
    const TestWindow host(kOtherClass, L"Host");
    SetForegroundWindow(host.get());
    ASSERT_TRUE(eventually([&] { return GetForegroundWindow() == host.get(); }));
    raiseWindow(u"Qt5QWindowIcon");
    EXPECT_TRUE(eventually([&] { return GetForegroundWindow() == peer.get(); }));
}

TEST(WindowActivation, LeavesTheFrontAloneWithoutAWindowOfThatClass) {
    const TestWindow host(kOtherClass, L"Qt5QWindowIcon");
    SetForegroundWindow(host.get());
    ASSERT_TRUE(eventually([&] { return GetForegroundWindow() == host.get(); }));
    raiseWindow(u"Qt5QWindowIcon");
    EXPECT_FALSE(testing_support::eventually([&] { return GetForegroundWindow() != host.get(); },
                                             std::chrono::milliseconds(50)));
}

TEST(WindowActivation, ReachesTheWindowOfAnotherProgram) {
    HelperProcess peer(WINDOW_HELPER, {"Qt5QWindowIcon", "Tessera"});
    ASSERT_TRUE(hearsOf(peer, "ready"));
    const TestWindow host(kOtherClass, L"Host");
    SetForegroundWindow(host.get());
    ASSERT_TRUE(eventually([&] { return GetForegroundWindow() == host.get(); }));
    raiseWindow(u"Qt5QWindowIcon");
    EXPECT_TRUE(eventually([&] {
        DWORD owner = 0;
        GetWindowThreadProcessId(GetForegroundWindow(), &owner);
        return owner == static_cast<DWORD>(peer.id());
    }));
}

TEST(WindowOfAProcess, IsHiddenAndShownAgain) {
    HelperProcess helper(WINDOW_HELPER, {"TesxTestWindow", "Tessera"});
    ASSERT_TRUE(hearsOf(helper, "ready"));
    Process process = Process::open(helper.id());
    ASSERT_TRUE(process.showWindow());
    EXPECT_TRUE(hearsOf(helper, "hidden"));
    EXPECT_EQ(helper.hear(), "shown");
}

TEST(WindowOfAProcess, IsNotThatOfAnother) {
    const TestWindow own(kOtherClass, L"Own");
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    helper.hear();
    EXPECT_FALSE(Process::open(helper.id()).showWindow());
    EXPECT_TRUE(Process::open(ownProcessId()).showWindow());
}

} // namespace
} // namespace tessera::platform
