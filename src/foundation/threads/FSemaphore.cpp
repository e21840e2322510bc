#include "foundation/threads/FSemaphore.h"

namespace tessera {

FSemaphore::FSemaphore(std::int32_t initial) : semaphore_(initial) {}

bool FSemaphore::wait(std::int32_t timeoutMs) {
    return semaphore_.wait(timeoutMs < 0 ? platform::kNoTimeLimit : static_cast<std::uint32_t>(timeoutMs));
}

} // namespace tessera
