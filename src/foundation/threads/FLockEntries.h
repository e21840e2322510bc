// The system's read-write lock operations, looked up when the first fast lock is made.
//
// An operation that the system lacks is replaced by one that reports misuse; of the two that try, a missing one is
// null.
#pragma once

#include "platform/WordLock.h"

#include <atomic>

namespace tessera {

namespace detail {

inline constinit std::atomic<const platform::WordLockEntries*> entriesInUse{nullptr};

} // namespace detail

// Whoever makes a fast lock calls it first.
void lookUpLockEntries();

inline const platform::WordLockEntries& lockEntries() {
    return *detail::entriesInUse.load(std::memory_order_acquire);
}

// For tests: operations to use in place of the system's, or null for those again. There may be no fast lock meanwhile.
void replaceLockEntries(const platform::WordLockEntries* entries);

} // namespace tessera
