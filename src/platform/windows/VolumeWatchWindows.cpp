#include "platform/VolumeWatch.h"

#include <bit>
#include <cstdint>
#include <windows.h>

#include <dbt.h>

namespace tessera::platform {

namespace {

constexpr const wchar_t* kWindowClass = L"MarlgroveDevWnd";

// Of the one watch; touched by the thread of its window alone.
struct VolumeWindow {
    HWND window = nullptr;
    VolumeChangeFunction function = nullptr;
};
VolumeWindow watch;

// The module that holds this code: a class that outlived it would lead nowhere.
HINSTANCE ownModule() {
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<LPCWSTR>(&watch), &module);
    return module;
}

// The news has a record for media, of a volume, with a bit for each drive letter. The lowest counts.
void passOn(WPARAM news, LPARAM record) {
    const auto* head = reinterpret_cast<const DEV_BROADCAST_HDR*>(record);
    if ((news != DBT_DEVICEARRIVAL && news != DBT_DEVICEREMOVECOMPLETE) || head == nullptr ||
        head->dbch_devicetype != DBT_DEVTYP_VOLUME) {
        return;
    }
    const auto* volume = reinterpret_cast<const DEV_BROADCAST_VOLUME*>(record);
    const auto drives = static_cast<std::uint32_t>(volume->dbcv_unitmask);
    if ((volume->dbcv_flags & DBTF_MEDIA) == 0 || drives == 0 || watch.function == nullptr) {
        return;
    }
    const char16_t root[] = {static_cast<char16_t>(u'A' + std::countr_zero(drives)), u':'};
    watch.function(news == DBT_DEVICEARRIVAL ? VolumeChange::arrived : VolumeChange::removed, {root, 2});
}

LRESULT CALLBACK handleMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_DEVICECHANGE) {
        passOn(first, second);
    }
    return ::DefWindowProcW(window, message, first, second);
}

// The system tells such news to top-level windows only; this one is never shown.
HWND createHiddenWindow() {
    WNDCLASSEXW type = {};
    type.cbSize = sizeof type;
    type.lpfnWndProc = handleMessage;
    type.hInstance = ownModule();
    type.lpszClassName = kWindowClass;
    if (::RegisterClassExW(&type) == 0 && ::GetLastError() != ERROR_CLASS_ALREADY_EXISTS) {
        return nullptr;
    }
    return ::CreateWindowExW(0, kWindowClass, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, type.hInstance, nullptr);
}

} // namespace

bool startVolumeWatch(VolumeChangeFunction function) {
    if (watch.window == nullptr) {
        watch.window = createHiddenWindow();
    }
    watch.function = watch.window != nullptr ? function : nullptr;
    return watch.window != nullptr;
}

void stopVolumeWatch() {
    if (watch.window == nullptr) {
        return;
    }
    ::DestroyWindow(watch.window);
    ::UnregisterClassW(kWindowClass, ownModule());
    watch = {};
}

} // namespace tessera::platform
