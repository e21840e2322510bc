// ProcessTable: processes by number alone, seen and ended by other means than those under test.
#pragma once

namespace tessera::testing_support {

// At once, with no chance to clean up, whosever process it is.
void killByNumber(int processId);

// Whether nothing is left of a process: where the system keeps an entry of a dead one for its parent, not even that.
bool hasVanished(int processId);

// Whether the number leads nowhere any more, not even to something dead that could still be opened.
bool isForgotten(int processId);

} // namespace tessera::testing_support
