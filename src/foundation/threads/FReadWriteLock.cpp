#include "foundation/threads/FReadWriteLock.h"

#include "foundation/threads/FLockEntries.h"

#include <new>

namespace tessera {

FReadWriteLock::FReadWriteLock(bool useFast) {
    if (!useFast) {
        slow_.reset(new (std::nothrow) platform::SlowReadWriteLock);
        return;
    }
    FHeldLocks::createSlot();
    lookUpLockEntries();
    fast_.reset(new (std::nothrow) platform::WordLock{});
    if (fast_ != nullptr) {
        lockEntries().initialize(*fast_);
    }
}

FReadWriteLock::~FReadWriteLock() = default;

bool FReadWriteLock::isValid() const {
    return fast_ != nullptr || (slow_ != nullptr && slow_->isValid());
}

// The short forms are apart from the long ones so that they need no room on the stack: what is stored there has to
// reach the cache before the lock's atomic operation can.

void FReadWriteLock::lockReadOutermost() {
    if (fast_ == nullptr || !FHeldLocks::enterOnly(this, FHeldLocks::kShared)) {
        lockReadBooked();
        return;
    }
    lockEntries().acquireShared(*fast_);
}

void FReadWriteLock::unlockReadOutermost() {
    if (fast_ == nullptr || !FHeldLocks::leaveOnly(this, FHeldLocks::kShared)) {
        unlockReadBooked();
        return;
    }
    lockEntries().releaseShared(*fast_);
}

void FReadWriteLock::lockWrite() {
    if (fast_ == nullptr || !FHeldLocks::enterOnly(this, FHeldLocks::kExclusive)) {
        lockWriteBooked();
        return;
    }
    lockEntries().acquireExclusive(*fast_);
}

void FReadWriteLock::unlockWrite() {
    if (fast_ == nullptr || !FHeldLocks::leaveOnly(this, FHeldLocks::kExclusive)) {
        unlockWriteBooked();
        return;
    }
    lockEntries().releaseExclusive(*fast_);
}

void FReadWriteLock::lockReadBooked() {
    if (fast_ != nullptr) {
        if (FHeldLocks::push(this, FHeldLocks::kShared) == 1) {
            lockEntries().acquireShared(*fast_);
        }
    } else if (isValid()) {
        slow_->lockRead();
    }
}

// Unlocks in the mode in which the thread has locked: a handler that survives the report of a wrong one must find a
// lock that is free, and the system's own lock may break when it is released in a mode in which nobody holds it.
void FReadWriteLock::releaseHeld(FHeldLocks::Mode asked) {
    const bool exclusive = FHeldLocks::holds(this, FHeldLocks::kExclusive);
    if (FHeldLocks::pop(this, asked) != 0) {
        return;
    }
    if (exclusive) {
        lockEntries().releaseExclusive(*fast_);
    } else {
        lockEntries().releaseShared(*fast_);
    }
}

void FReadWriteLock::unlockReadBooked() {
    if (fast_ != nullptr) {
        releaseHeld(FHeldLocks::kShared);
    } else if (isValid()) {
        slow_->unlockRead();
    }
}

void FReadWriteLock::lockWriteBooked() {
    if (fast_ != nullptr) {
        // A refused booking still waits for the lock: the handler has said that the thread is to go on.
        if (FHeldLocks::push(this, FHeldLocks::kExclusive) <= 1) {
            lockEntries().acquireExclusive(*fast_);
        }
    } else if (isValid()) {
        slow_->lockWrite();
    }
}

void FReadWriteLock::unlockWriteBooked() {
    if (fast_ != nullptr) {
        releaseHeld(FHeldLocks::kExclusive);
    } else if (isValid()) {
        slow_->unlockWrite();
    }
}

bool FReadWriteLock::tryLockRead() {
    const auto tryAcquire = fast_ != nullptr ? lockEntries().tryAcquireShared : nullptr;
    if (tryAcquire == nullptr) {
        return false;
    }
    const int count = FHeldLocks::push(this, FHeldLocks::kShared);
    if (count != 1) {
        return count > 1;
    }
    if (!tryAcquire(*fast_)) {
        FHeldLocks::pop(this, FHeldLocks::kShared);
        return false;
    }
    return true;
}

bool FReadWriteLock::tryLockWrite() {
    const auto tryAcquire = fast_ != nullptr ? lockEntries().tryAcquireExclusive : nullptr;
    if (tryAcquire == nullptr || FHeldLocks::holds(this, FHeldLocks::kShared)) {
        return false;
    }
    const int count = FHeldLocks::push(this, FHeldLocks::kExclusive);
    if (count != 1) {
        return count > 1;
    }
    if (!tryAcquire(*fast_)) {
        FHeldLocks::pop(this, FHeldLocks::kExclusive);
        return false;
    }
    return true;
}

} // namespace tessera
