// A program with one top-level window. Arguments: the window's class, its title. Writes "ready" once the window is
// there, then "hidden" and "shown" whenever it is, until its input ends.
#include "platform/ProgramArguments.h"
#include "platform/windows/WideText.h"

#include <windows.h>

#include <iostream>
#include <string>
#include <thread>

namespace {

LRESULT CALLBACK handleMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_SHOWWINDOW) {
        std::cout << (first != 0 ? "shown" : "hidden") << std::endl;
    }
    return DefWindowProcW(window, message, first, second);
}

} // namespace

int main(int argc, char** argv) {
    tessera::platform::ProgramArguments arguments(argc, argv);
    if (arguments.count() != 3) {
        return 2;
    }
    const std::wstring name = tessera::platform::wideText(std::string_view(arguments.values()[1]));
    const std::wstring title = tessera::platform::wideText(std::string_view(arguments.values()[2]));
    WNDCLASSEXW type = {};
    type.cbSize = sizeof type;
    type.lpfnWndProc = handleMessage;
    type.hInstance = GetModuleHandleW(nullptr);
    type.lpszClassName = name.c_str();
    if (RegisterClassExW(&type) == 0 ||
        CreateWindowExW(0, name.c_str(), title.c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100, nullptr,
                        nullptr, type.hInstance, nullptr) == nullptr) {
        return 1;
    }
    std::cout << "ready" << std::endl;
    const DWORD thread = GetCurrentThreadId();
    std::thread([thread] {
        std::string line;
        while (std::getline(std::cin, line)) {
        }
        PostThreadMessageW(thread, WM_QUIT, 0, 0);
    }).detach();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    return 0;
}
