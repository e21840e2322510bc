// InstanceLock: at most one holder per file among all processes of the machine, for as long as the holder lives.
//
// The file is created if need be, and its content doesn't matter. A crash lets the lock go. Move-only; the lock goes
// with the object. Paths are UTF-8 in the platform's own form.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace tessera::platform {

class InstanceLock {
public:
    // Nothing, and no error, when somebody else holds it; nothing and the system's error when the file can't be opened
    // or locked.
    static std::optional<InstanceLock> tryAcquire(const std::string& path, std::error_code& error);
    static std::optional<InstanceLock> tryAcquire(const std::string& path) {
        std::error_code ignored;
        return tryAcquire(path, ignored);
    }

    InstanceLock(InstanceLock&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}
    InstanceLock& operator=(InstanceLock&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~InstanceLock();

private:
    explicit InstanceLock(std::intptr_t handle) : handle_(handle) {}

    std::intptr_t handle_;
};

} // namespace tessera::platform
