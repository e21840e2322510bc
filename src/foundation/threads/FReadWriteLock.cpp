#include "foundation/threads/FReadWriteLock.h"

#include "foundation/threads/FHeldLocks.h"
#include "foundation/threads/FLockEntries.h"
#include "foundation/threads/FLockError.h"

#include <new>

namespace tessera {

namespace {

// The system's operation, or the report that it has none.
template <class Entry>
void call(Entry entry, platform::WordLock& lock) {
    if (entry == nullptr) {
        reportLockError(kLockMisuse);
        return;
    }
    entry(lock);
}

} // namespace

FReadWriteLock::FReadWriteLock(bool useFast) {
    if (!useFast) {
        slow_.reset(new (std::nothrow) platform::SlowReadWriteLock);
        return;
    }
    fast_.reset(new (std::nothrow) platform::WordLock{});
    if (fast_ != nullptr) {
        FHeldLocks::createSlot();
        call(lockEntries().initialize, *fast_);
    }
}

FReadWriteLock::~FReadWriteLock() = default;

bool FReadWriteLock::isValid() const {
    return fast_ != nullptr || (slow_ != nullptr && slow_->isValid());
}

void FReadWriteLock::lockRead() {
    if (fast_ != nullptr) {
        if (FHeldLocks::push(fast_.get(), FHeldLocks::kShared) == 1) {
            call(lockEntries().acquireShared, *fast_);
        }
    } else if (isValid()) {
        slow_->lockRead();
    }
}

void FReadWriteLock::unlockRead() {
    if (fast_ != nullptr) {
        if (FHeldLocks::pop(fast_.get(), FHeldLocks::kShared) == 0) {
            call(lockEntries().releaseShared, *fast_);
        }
    } else if (isValid()) {
        slow_->unlockRead();
    }
}

void FReadWriteLock::lockWrite() {
    if (fast_ != nullptr) {
        // A refused booking still waits for the lock: the handler has said that the thread is to go on.
        if (FHeldLocks::push(fast_.get(), FHeldLocks::kExclusive) <= 1) {
            call(lockEntries().acquireExclusive, *fast_);
        }
    } else if (isValid()) {
        slow_->lockWrite();
    }
}

void FReadWriteLock::unlockWrite() {
    if (fast_ != nullptr) {
        if (FHeldLocks::pop(fast_.get(), FHeldLocks::kExclusive) == 0) {
            call(lockEntries().releaseExclusive, *fast_);
        }
    } else if (isValid()) {
        slow_->unlockWrite();
    }
}

bool FReadWriteLock::tryLockRead() {
    const auto tryAcquire = lockEntries().tryAcquireShared;
    if (fast_ == nullptr || tryAcquire == nullptr) {
        return false;
    }
    const int count = FHeldLocks::push(fast_.get(), FHeldLocks::kShared);
    if (count != 1) {
        return count > 1;
    }
    if (!tryAcquire(*fast_)) {
        FHeldLocks::pop(fast_.get(), FHeldLocks::kShared);
        return false;
    }
    return true;
}

bool FReadWriteLock::tryLockWrite() {
    const auto tryAcquire = lockEntries().tryAcquireExclusive;
    if (fast_ == nullptr || tryAcquire == nullptr || FHeldLocks::holds(fast_.get(), FHeldLocks::kShared)) {
        return false;
    }
    const int count = FHeldLocks::push(fast_.get(), FHeldLocks::kExclusive);
    if (count != 1) {
        return count > 1;
    }
    if (!tryAcquire(*fast_)) {
        FHeldLocks::pop(fast_.get(), FHeldLocks::kExclusive);
        return false;
    }
    return true;
}

} // namespace tessera
