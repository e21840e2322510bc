#include "foundation/threads/FLockEntries.h"

#include <atomic>

namespace tessera {

namespace {

std::atomic<const platform::WordLockEntries*> replacement{nullptr};

} // namespace

const platform::WordLockEntries& lockEntries() {
    static const platform::WordLockEntries system = platform::wordLockEntries();
    const platform::WordLockEntries* entries = replacement.load(std::memory_order_acquire);
    return entries != nullptr ? *entries : system;
}

const platform::WordLockEntries* replaceLockEntries(const platform::WordLockEntries* entries) {
    return replacement.exchange(entries);
}

} // namespace tessera
