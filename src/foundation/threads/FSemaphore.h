// FSemaphore: a counting semaphore within the process, at most 0x7fffffff.
#pragma once

#include "platform/Semaphore.h"

#include <cstdint>

namespace tessera {

class FSemaphore {
public:
    // A negative count makes no semaphore.
    explicit FSemaphore(std::int32_t initial);

    // Takes one; true when it could. A negative time means without limit. False without a semaphore.
    bool wait(std::int32_t timeoutMs);
    bool isValid() const { return semaphore_.isValid(); }

private:
    platform::Semaphore semaphore_;
};

} // namespace tessera
