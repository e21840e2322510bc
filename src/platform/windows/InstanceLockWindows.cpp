#include "platform/InstanceLock.h"

#include "platform/windows/SystemPath.h"

#include <windows.h>

namespace tessera::platform {

namespace {

static_assert(sizeof(std::intptr_t) == sizeof(HANDLE));

// No sharing of deletion: a second file of that name would be a second lock.
constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE;

} // namespace

std::optional<InstanceLock> InstanceLock::tryAcquire(const std::string& path, std::error_code& error) {
    error.clear();
    HANDLE file = CreateFileW(systemPath(path).c_str(), GENERIC_READ | GENERIC_WRITE, kShare, nullptr, OPEN_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        error.assign(lastSystemError(), std::system_category());
        return std::nullopt;
    }
    // A range rather than the opening is what excludes others: somebody who merely looks at the file takes no lock.
    OVERLAPPED range = {};
    if (LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &range) == 0) {
        const std::int32_t reason = lastSystemError();
        if (reason != ERROR_LOCK_VIOLATION && reason != ERROR_IO_PENDING) {
            error.assign(reason, std::system_category());
        }
        CloseHandle(file);
        return std::nullopt;
    }
    return InstanceLock(reinterpret_cast<std::intptr_t>(file));
}

InstanceLock::~InstanceLock() {
    if (handle_ != -1) {
        HANDLE file = reinterpret_cast<HANDLE>(handle_);
        // Closing gives the range back as well, but the system says that it may take its time over that.
        OVERLAPPED range = {};
        UnlockFileEx(file, 0, 1, 0, &range);
        CloseHandle(file);
    }
}

} // namespace tessera::platform
