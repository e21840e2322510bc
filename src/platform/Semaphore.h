// Semaphore: a count within this process that waits take from and releases add to. At most 0x7fffffff. Any thread.
// Whoever has taken the last count that is to come may delete it, even while the releasing thread is on its way out.
#pragma once

#include "platform/TimeLimit.h"

#include <cstdint>

namespace tessera::platform {

class Semaphore {
public:
    static constexpr std::int32_t kMaximum = 0x7fffffff;

    // A negative count makes no semaphore: every operation fails.
    explicit Semaphore(std::int32_t initial);
    Semaphore(const Semaphore&) = delete;
    Semaphore& operator=(const Semaphore&) = delete;
    ~Semaphore();

    bool isValid() const;
    // True when one was taken.
    bool wait(std::uint32_t timeoutMs);
    // False, with nothing added, when `count` isn't positive or the sum would exceed the maximum.
    bool release(std::int32_t count);

private:
    // Linux: the count and the number of sleepers. Windows: the handle.
    std::uint64_t state_;
};

} // namespace tessera::platform
