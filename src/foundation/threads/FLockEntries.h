// The system's read-write lock operations, looked up at the first use.
#pragma once

#include "platform/WordLock.h"

namespace tessera {

const platform::WordLockEntries& lockEntries();

// For tests: operations to use in place of the system's, or null for those again. No lock may be held meanwhile. Gives
// what was used before.
const platform::WordLockEntries* replaceLockEntries(const platform::WordLockEntries* entries);

} // namespace tessera
