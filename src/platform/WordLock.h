// WordLock: many readers or one writer, in eight bytes. No owner, no recursion: a thread that takes it twice waits for
// itself. A release is in the mode in which the lock is held; systems differ in what another one does to the lock.
//
// The operations come as a table, as a system may lack them. Any thread.
#pragma once

#include <cstdint>

namespace tessera::platform {

struct WordLock {
    std::uint32_t words[2];
};
static_assert(sizeof(WordLock) == 8);

struct WordLockEntries {
    void (*initialize)(WordLock& lock);
    void (*acquireShared)(WordLock& lock);
    void (*releaseShared)(WordLock& lock);
    void (*acquireExclusive)(WordLock& lock);
    void (*releaseExclusive)(WordLock& lock);
    bool (*tryAcquireExclusive)(WordLock& lock);
    bool (*tryAcquireShared)(WordLock& lock);
};

// What this system offers; an entry that it lacks is null.
const WordLockEntries& wordLockEntries();

} // namespace tessera::platform
