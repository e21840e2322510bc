#include "platform/Semaphore.h"

#include "platform/linux/Futex.h"

#include <atomic>
#include <bit>

namespace tessera::platform {

namespace {

// Both halves change together: the low one is the count, which is also the word that sleepers sleep on, the high one
// the number of those. So a release looks at the object for the last time when it adds its count, and whoever takes
// that may delete the object at once; the wake uses the address alone.
constexpr std::uint64_t kOneSleeper = std::uint64_t{1} << 32;
constexpr std::uint64_t kNone = 0xffffffffu; // no semaphore: a count that no valid one reaches

std::uint32_t countIn(std::uint64_t state) {
    return static_cast<std::uint32_t>(state);
}

std::uint32_t* countWord(std::uint64_t& state) {
    static_assert(std::endian::native == std::endian::little);
    return reinterpret_cast<std::uint32_t*>(&state);
}

// Takes one, and with it a sleeper off the number if this is one.
bool takeOne(std::atomic_ref<std::uint64_t> state, std::uint64_t sleeper) {
    std::uint64_t seen = state.load();
    while (countIn(seen) != 0) {
        if (state.compare_exchange_weak(seen, seen - 1 - sleeper)) {
            return true;
        }
    }
    return false;
}

} // namespace

Semaphore::Semaphore(std::int32_t initial) : state_(initial < 0 ? kNone : static_cast<std::uint64_t>(initial)) {}

Semaphore::~Semaphore() = default;

bool Semaphore::isValid() const {
    return std::atomic_ref(const_cast<std::uint64_t&>(state_)).load() != kNone;
}

bool Semaphore::wait(std::uint32_t timeoutMs) {
    const std::atomic_ref state(state_);
    if (!isValid()) {
        return false;
    }
    if (takeOne(state, 0)) {
        return true;
    }
    if (timeoutMs == 0) {
        return false;
    }
    const Deadline deadline(timeoutMs);
    state.fetch_add(kOneSleeper);
    while (futexWait(countWord(state_), 0, deadline, FutexScope::process)) {
        if (takeOne(state, kOneSleeper)) {
            return true;
        }
    }
    if (takeOne(state, kOneSleeper)) {
        return true;
    }
    state.fetch_sub(kOneSleeper);
    return false;
}

bool Semaphore::release(std::int32_t count) {
    const std::atomic_ref state(state_);
    std::uint64_t before = state.load();
    do {
        if (count <= 0 || before == kNone || static_cast<std::uint32_t>(count) > kMaximum - countIn(before)) {
            return false;
        }
    } while (!state.compare_exchange_weak(before, before + static_cast<std::uint32_t>(count)));
    if (before >= kOneSleeper) {
        futexWake(countWord(state_), count, FutexScope::process);
    }
    return true;
}

} // namespace tessera::platform
