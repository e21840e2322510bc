#include "platform/InstanceLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace tessera::platform {

std::optional<InstanceLock> InstanceLock::tryAcquire(const std::string& path) {
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0) {
        return std::nullopt;
    }
    if (flock(file, LOCK_EX | LOCK_NB) != 0) {
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
