// LocalSemaphore: a counting semaphore within the process. Any thread.
#pragma once

#include "platform/Semaphore.h"

#include <cstdint>

namespace tessera {

class LocalSemaphore {
public:
    // With all bits set, a wait has no limit.
    static constexpr std::uint32_t kForever = platform::kNoTimeLimit;

    explicit LocalSemaphore(std::int32_t initial) : semaphore_(initial) {}

    // Whether one was taken.
    bool wait(std::uint32_t timeoutMs) { return semaphore_.wait(timeoutMs); }
    // False, with nothing added, for a count below 1 or a sum above 0x7fffffff.
    bool release(std::int32_t count) { return semaphore_.release(count); }

    // Waits for a semaphore of the process that nobody ever releases.
    static void sleep(std::uint32_t ms);

private:
    platform::Semaphore semaphore_;
};

} // namespace tessera
