#include "platform/Processes.h"

#include <utility>

namespace tessera::platform {

Process& Process::operator=(Process&& other) noexcept {
    if (this != &other) {
        close();
        handle_ = std::exchange(other.handle_, -1);
        id_ = std::exchange(other.id_, -1);
    }
    return *this;
}

} // namespace tessera::platform
