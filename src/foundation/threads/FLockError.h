// What the read-write lock does when it is misused: it calls one handler of the process. The default one aborts, since
// a wrong lock order only shows itself later, and elsewhere.
#pragma once

namespace tessera {

// Unlock without a lock, mismatched mode, release out of order, a thread's record destroyed with locks held, or no
// lock operations on this system.
inline constexpr int kLockMisuse = -1;
inline constexpr int kLockThreadLocalFailure = -2;
// A write request by a thread that holds the lock for reading.
inline constexpr int kLockUpgrade = -3;
// More than 16 distinct locks held by one thread.
inline constexpr int kLockTooMany = -4;

using FLockErrorHandler = void (*)(int code);

// Null restores the default handler. A handler may return; the lock operations then go on as best they can.
void setLockErrorHandler(FLockErrorHandler handler);

void reportLockError(int code);

} // namespace tessera
