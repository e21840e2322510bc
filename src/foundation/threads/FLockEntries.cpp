#include "foundation/threads/FLockEntries.h"

#include "foundation/threads/FLockError.h"

namespace tessera {

namespace {

using platform::WordLock;
using platform::WordLockEntries;

void reportMissing(WordLock&) {
    reportLockError(kLockMisuse);
}

WordLockEntries completed(WordLockEntries entries) {
    for (auto WordLockEntries::*entry :
         {&WordLockEntries::initialize, &WordLockEntries::acquireShared, &WordLockEntries::releaseShared,
          &WordLockEntries::acquireExclusive, &WordLockEntries::releaseExclusive}) {
        if (entries.*entry == nullptr) {
            entries.*entry = reportMissing;
        }
    }
    return entries;
}

const WordLockEntries& systemEntries() {
    static const WordLockEntries entries = completed(platform::wordLockEntries());
    return entries;
}

} // namespace

void lookUpLockEntries() {
    const WordLockEntries* none = nullptr;
    detail::entriesInUse.compare_exchange_strong(none, &systemEntries());
}

void replaceLockEntries(const WordLockEntries* entries) {
    static WordLockEntries replacement;
    if (entries != nullptr) {
        replacement = completed(*entries);
    }
    detail::entriesInUse.store(entries != nullptr ? &replacement : &systemEntries());
}

} // namespace tessera
