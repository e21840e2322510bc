#include "platform/InstanceLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace tessera::platform {

std::optional<InstanceLock> InstanceLock::tryAcquire(const std::string& path, std::error_code& error) {
    error.clear();
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0) {
        error.assign(errno, std::system_category());
        return std::nullopt;
    }
    if (flock(file, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK) {
            error.assign(errno, std::system_category());
        }
        close(file);
        return std::nullopt;
    }
    return InstanceLock(file);
}

InstanceLock::~InstanceLock() {
    if (handle_ >= 0) {
        close(static_cast<int>(handle_));
    }
}

} // namespace tessera::platform
