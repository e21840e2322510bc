// Sleeping on a 32-bit word until another thread or process changes it. The word itself carries the meaning; a wake
// only says "look again".
#pragma once

#include "platform/TimeLimit.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <ctime>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tessera::platform {

// A limit that several waits of one operation share.
class Deadline {
public:
    explicit Deadline(std::uint32_t timeoutMs) : limited_(timeoutMs != kNoTimeLimit) {
        if (limited_) {
            clock_gettime(CLOCK_MONOTONIC, &end_);
            const std::int64_t nanoseconds = end_.tv_nsec + timeoutMs % 1000 * 1'000'000ll;
            end_.tv_sec += timeoutMs / 1000 + nanoseconds / 1'000'000'000;
            end_.tv_nsec = nanoseconds % 1'000'000'000;
        }
    }
    const timespec* end() const { return limited_ ? &end_ : nullptr; }

private:
    timespec end_{};
    bool limited_;
};

enum class FutexScope : int { process = FUTEX_PRIVATE_FLAG, shared = 0 };

// False when the time is over. True otherwise, for any reason and for none: the caller looks at the word again.
inline bool futexWait(std::uint32_t* word, std::uint32_t expected, const Deadline& deadline, FutexScope scope) {
    // The bitset form takes a point in time, so a wait that a signal interrupts doesn't start over.
    return syscall(SYS_futex, word, FUTEX_WAIT_BITSET | static_cast<int>(scope), expected, deadline.end(), nullptr,
                   FUTEX_BITSET_MATCH_ANY) == 0 ||
           errno != ETIMEDOUT;
}

// How many were woken.
inline int futexWake(std::uint32_t* word, int count, FutexScope scope) {
    return static_cast<int>(syscall(SYS_futex, word, FUTEX_WAKE | static_cast<int>(scope), count));
}

// The words that an atomic object of ours sleeps on.
inline std::uint32_t* futexWord(std::atomic<std::uint32_t>& word) {
    static_assert(sizeof word == sizeof(std::uint32_t) && std::atomic<std::uint32_t>::is_always_lock_free);
    return reinterpret_cast<std::uint32_t*>(&word);
}

} // namespace tessera::platform
