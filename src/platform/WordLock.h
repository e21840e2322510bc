// WordLock: many readers or one writer, in eight bytes. No owner, no recursion: a thread that takes it twice waits for
// itself. A release in a mode in which the lock isn't held lets go of what is held, and does nothing if nothing is.
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
