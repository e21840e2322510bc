// The priority of this process among all others. Nothing is cached; false where the system refuses.
#pragma once

namespace tessera {

// High class, or back to normal.
bool setProcessHighPriority(bool on);
// Above normal, or, when off, below normal.
bool setProcessAboveNormal(bool on);
// The platform's short rise of a thread that wakes up. False where there is no such thing.
bool setPriorityBoost(bool on);

} // namespace tessera
