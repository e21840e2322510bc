#include "platform/Semaphore.h"

#include "platform/linux/Futex.h"

#include <atomic>

namespace tessera::platform {

namespace {

// The first word is the count, the second the number of threads that sleep or are about to: release asks the kernel
// only if there are any.
constexpr int kCount = 0;
constexpr int kSleepers = 1;

bool takeOne(std::atomic_ref<std::int32_t> count) {
    std::int32_t left = count.load();
    while (left > 0) {
        if (count.compare_exchange_weak(left, left - 1)) {
            return true;
        }
    }
    return false;
}

} // namespace

Semaphore::Semaphore(std::int32_t initial) : words_{initial < 0 ? -1 : initial, 0} {}

Semaphore::~Semaphore() = default;

bool Semaphore::isValid() const {
    // A valid count never falls below 0.
    return std::atomic_ref(const_cast<std::int32_t&>(words_[kCount])).load() >= 0;
}

bool Semaphore::wait(std::uint32_t timeoutMs) {
    std::atomic_ref count(words_[kCount]);
    std::atomic_ref sleepers(words_[kSleepers]);
    if (takeOne(count)) {
        return true;
    }
    if (timeoutMs == 0 || !isValid()) {
        return false;
    }
    const Deadline deadline(timeoutMs);
    sleepers.fetch_add(1);
    bool taken = false;
    bool inTime = true;
    while (!taken && inTime) {
        inTime = futexWait(reinterpret_cast<std::uint32_t*>(&words_[kCount]), 0, deadline, FutexScope::process);
        taken = takeOne(count);
    }
    sleepers.fetch_sub(1);
    return taken;
}

bool Semaphore::release(std::int32_t count) {
    std::atomic_ref left(words_[kCount]);
    std::int32_t before = left.load();
    do {
        if (count <= 0 || before < 0 || count > kMaximum - before) {
            return false;
        }
    } while (!left.compare_exchange_weak(before, before + count));
    if (std::atomic_ref(words_[kSleepers]).load() != 0) {
        futexWake(reinterpret_cast<std::uint32_t*>(&words_[kCount]), count, FutexScope::process);
    }
    return true;
}

} // namespace tessera::platform
