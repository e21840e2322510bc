// WindowsHandle: the one owner of a handle of the system; closes it. Move-only.
#pragma once

#include <utility>
#include <windows.h>

namespace tessera::platform {

class WindowsHandle {
public:
    WindowsHandle() = default;
    explicit WindowsHandle(HANDLE handle) : handle_(handle) {}
    WindowsHandle(WindowsHandle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    WindowsHandle& operator=(WindowsHandle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~WindowsHandle() {
        if (*this) {
            CloseHandle(handle_);
        }
    }

    explicit operator bool() const { return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }
    HANDLE release() { return std::exchange(handle_, nullptr); }

private:
    HANDLE handle_ = nullptr;
};

} // namespace tessera::platform
