// FReadWriteLock: many readers or one writer.
//
// Two kinds, which the constructor's caller chooses between:
// - fast: eight bytes, no system call unless somebody has to wait. A thread may nest it in either mode, and read under
//   its own write lock. It may hold 16 different ones, must release them in the reverse order, and may not ask for the
//   write lock while it reads. Misuse is reported (FLockError.h) and by default ends the process.
// - slow: a mutex, an event and a semaphore as the older systems had them. No bookkeeping and no try operations: they
//   give false.
// Any thread. A thread that wasn't started by FThread calls releaseThreadLocals() before it ends.
#pragma once

#include "foundation/threads/FHeldLocks.h"
#include "platform/SlowReadWriteLock.h"
#include "platform/WordLock.h"

#include <memory>

namespace tessera {

class FReadWriteLock {
public:
    explicit FReadWriteLock(bool useFast);
    FReadWriteLock(const FReadWriteLock&) = delete;
    FReadWriteLock& operator=(const FReadWriteLock&) = delete;
    ~FReadWriteLock();

    void lockRead() {
        if (!FHeldLocks::nest(this)) {
            lockReadOutermost();
        }
    }
    void unlockRead() {
        if (!FHeldLocks::unnest(this)) {
            unlockReadOutermost();
        }
    }
    void lockWrite();
    void unlockWrite();
    bool tryLockRead();
    bool tryLockWrite();

    // False when the lock couldn't be made.
    bool isValid() const;

private:
    // Each of these falls to the next: nested use of a lock, the only lock of a thread, everything else.
    void lockReadOutermost();
    void unlockReadOutermost();
    void lockReadBooked();
    void unlockReadBooked();
    void lockWriteBooked();
    void unlockWriteBooked();
    void releaseHeld(FHeldLocks::Mode asked);

    std::unique_ptr<platform::WordLock> fast_;
    std::unique_ptr<platform::SlowReadWriteLock> slow_;
};

} // namespace tessera
