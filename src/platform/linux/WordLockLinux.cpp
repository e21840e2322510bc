#include "platform/WordLock.h"

#include "platform/linux/Futex.h"

#include <atomic>

namespace tessera::platform {

namespace {

// words[0]: the low 30 bits count the readers, all of them set mean a writer; bit 30 says that readers sleep on this
// word, bit 31 that writers sleep on words[1]. Whoever finds a waiting bit set queues up behind it, so that writers
// aren't starved; a writer that wakes takes the lock whatever the bits say.
// words[1]: counts the wakes of writers. A writer reads it before it looks at the state for the last time, so that a
// wake in between isn't lost.
constexpr std::uint32_t kHolders = 0x3fffffffu;
constexpr std::uint32_t kWriter = kHolders;
constexpr std::uint32_t kMaximumReaders = kHolders - 1;
constexpr std::uint32_t kReadersWait = 0x40000000u;
constexpr std::uint32_t kWritersWait = 0x80000000u;

const Deadline& forever() {
    static const Deadline deadline(kNoTimeLimit);
    return deadline;
}

std::atomic_ref<std::uint32_t> stateOf(WordLock& lock) {
    return std::atomic_ref(lock.words[0]);
}

bool admitsReader(std::uint32_t state) {
    return state < kMaximumReaders;
}

bool isFree(std::uint32_t state) {
    return (state & kHolders) == 0;
}

void initialize(WordLock& lock) {
    lock.words[0] = 0;
    lock.words[1] = 0;
}

bool tryAcquireShared(WordLock& lock) {
    auto state = stateOf(lock);
    std::uint32_t seen = state.load(std::memory_order_relaxed);
    while (admitsReader(seen)) {
        if (state.compare_exchange_weak(seen, seen + 1, std::memory_order_acquire, std::memory_order_relaxed)) {
            return true;
        }
    }
    return false;
}

void waitForShared(WordLock& lock) {
    auto state = stateOf(lock);
    while (!tryAcquireShared(lock)) {
        std::uint32_t seen = state.load(std::memory_order_relaxed);
        if (admitsReader(seen)) {
            continue;
        }
        if ((seen & kReadersWait) == 0 &&
            !state.compare_exchange_strong(seen, seen | kReadersWait, std::memory_order_relaxed)) {
            continue;
        }
        futexWait(&lock.words[0], seen | kReadersWait, forever(), FutexScope::process);
    }
}

void acquireShared(WordLock& lock) {
    // A guess at the usual case spares the load that an exchange has to wait for.
    std::uint32_t free = 0;
    if (!stateOf(lock).compare_exchange_strong(free, 1, std::memory_order_acquire, std::memory_order_relaxed) &&
        !tryAcquireShared(lock)) {
        waitForShared(lock);
    }
}

bool wakeWriter(WordLock& lock) {
    std::atomic_ref(lock.words[1]).fetch_add(1, std::memory_order_release);
    return futexWake(&lock.words[1], 1, FutexScope::process) > 0;
}

// After the last holder has gone and left `seen`. If somebody takes the lock meanwhile, the waking is his when he
// leaves: the waiting bits are still there.
void wakeWaiting(WordLock& lock, std::uint32_t seen) {
    auto state = stateOf(lock);
    if (seen == kWritersWait) {
        if (state.compare_exchange_strong(seen, 0, std::memory_order_relaxed)) {
            wakeWriter(lock);
            return;
        }
    }
    if (seen == (kWritersWait | kReadersWait)) {
        if (!state.compare_exchange_strong(seen, kReadersWait, std::memory_order_relaxed)) {
            return;
        }
        if (wakeWriter(lock)) {
            return;
        }
        // The writer hadn't fallen asleep yet; it sees the changed word and comes back. The readers are next.
        seen = kReadersWait;
    }
    if (seen == kReadersWait && state.compare_exchange_strong(seen, 0, std::memory_order_relaxed)) {
        futexWake(&lock.words[0], INT_MAX, FutexScope::process);
    }
}

// Lets go of what is held, in whichever mode: a caller that mistakes the mode has held the lock nevertheless, and a
// count that runs below 0 would block the lock for good.
void release(WordLock& lock) {
    auto state = stateOf(lock);
    std::uint32_t seen = 1;
    if (state.compare_exchange_strong(seen, 0, std::memory_order_release, std::memory_order_relaxed)) {
        return; // the last reader, and nobody waits
    }
    std::uint32_t left = 0;
    do {
        if (isFree(seen)) {
            return;
        }
        left = (seen & kHolders) == kWriter ? seen - kWriter : seen - 1;
    } while (!state.compare_exchange_weak(seen, left, std::memory_order_release, std::memory_order_relaxed));
    if (left != 0 && isFree(left)) {
        wakeWaiting(lock, left);
    }
}

bool tryAcquireExclusive(WordLock& lock) {
    auto state = stateOf(lock);
    std::uint32_t seen = state.load(std::memory_order_relaxed);
    while (isFree(seen)) {
        if (state.compare_exchange_weak(seen, seen | kWriter, std::memory_order_acquire, std::memory_order_relaxed)) {
            return true;
        }
    }
    return false;
}

void waitForExclusive(WordLock& lock) {
    auto state = stateOf(lock);
    std::atomic_ref wakes(lock.words[1]);
    // Once this writer has slept, others may sleep beside it; the wake that it got has cleared the bit for all.
    std::uint32_t others = 0;
    for (;;) {
        std::uint32_t seen = state.load(std::memory_order_relaxed);
        if (isFree(seen)) {
            if (state.compare_exchange_weak(seen, seen | kWriter | others, std::memory_order_acquire,
                                            std::memory_order_relaxed)) {
                return;
            }
            continue;
        }
        if ((seen & kWritersWait) == 0 &&
            !state.compare_exchange_strong(seen, seen | kWritersWait, std::memory_order_relaxed)) {
            continue;
        }
        others = kWritersWait;
        const std::uint32_t wakesSeen = wakes.load(std::memory_order_acquire);
        seen = state.load(std::memory_order_relaxed);
        if (isFree(seen) || (seen & kWritersWait) == 0) {
            continue;
        }
        futexWait(&lock.words[1], wakesSeen, forever(), FutexScope::process);
    }
}

void acquireExclusive(WordLock& lock) {
    if (!tryAcquireExclusive(lock)) {
        waitForExclusive(lock);
    }
}

} // namespace

const WordLockEntries& wordLockEntries() {
    static constexpr WordLockEntries entries{initialize, acquireShared,       release,         acquireExclusive,
                                             release,    tryAcquireExclusive, tryAcquireShared};
    return entries;
}

} // namespace tessera::platform
