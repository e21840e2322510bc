#include "platform/Threads.h"

#include <utility>

namespace tessera::platform {

ThreadHandle& ThreadHandle::operator=(ThreadHandle&& other) noexcept {
    if (this != &other) {
        close();
        control_ = std::exchange(other.control_, nullptr);
    }
    return *this;
}

} // namespace tessera::platform
