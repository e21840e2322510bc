#include "foundation/threads/FHeldLocks.h"

#include "foundation/threads/FLock.h"
#include "foundation/threads/FLockError.h"
#include "foundation/threads/FLockGuard.h"
#include "foundation/threads/FThreadLocal.h"

#include <atomic>
#include <new>

namespace tessera {

namespace {

// Stays for the whole process: locks may be taken until the very end.
std::atomic<FThreadLocal*> threadSlot{nullptr};

int report(int code) {
    reportLockError(code);
    return code;
}

} // namespace

void FHeldLocks::createSlot() {
    static FLock* const lock = new FLock("FLock");
    const FLockGuard guard(*lock);
    if (threadSlot.load(std::memory_order_acquire) != nullptr) {
        return;
    }
    auto* slot = new (std::nothrow) FThreadLocal;
    FThreadLocal* none = nullptr;
    if (slot == nullptr || !slot->create() || !threadSlot.compare_exchange_strong(none, slot)) {
        delete slot;
    }
}

FHeldLocks* FHeldLocks::makeForThisThread() {
    FThreadLocal* slot = threadSlot.load(std::memory_order_acquire);
    auto* record = slot != nullptr ? new (std::nothrow) FHeldLocks : nullptr;
    if (record == nullptr) {
        return nullptr;
    }
    // The slot adds the reference that keeps the record.
    const bool stored = slot->set(record);
    record->release();
    return stored ? record : nullptr;
}

FHeldLocks::FHeldLocks() {
    record_ = this;
    cached_ = entries_;
}

FHeldLocks::~FHeldLocks() {
    record_ = nullptr;
    cached_ = &nothing_;
    if (used_ != 0) {
        reportLockError(kLockMisuse);
    }
}

int FHeldLocks::push(const void* lock, Mode mode) {
    FHeldLocks* record = ofThisThread();
    if (record == nullptr) {
        record = makeForThisThread();
    }
    return record != nullptr ? record->add(lock, mode) : report(kLockThreadLocalFailure);
}

int FHeldLocks::pop(const void* lock, Mode mode) {
    FHeldLocks* record = ofThisThread();
    return record != nullptr ? record->remove(lock, mode) : report(kLockThreadLocalFailure);
}

bool FHeldLocks::holds(const void* lock, Mode mode) {
    FHeldLocks* record = ofThisThread();
    const Entry* entry = record != nullptr ? record->find(lock) : nullptr;
    return entry != nullptr && entry->mode == mode;
}

FHeldLocks::Entry* FHeldLocks::find(const void* lock) {
    if (cached_->lock == lock) {
        return cached_;
    }
    for (Entry* entry = entries_ + used_; entry != entries_;) {
        --entry;
        if (entry->lock == lock) {
            cached_ = entry;
            return entry;
        }
    }
    return nullptr;
}

int FHeldLocks::add(const void* lock, Mode mode) {
    if (Entry* entry = find(lock)) {
        if (mode == kExclusive && entry->mode == kShared) {
            return report(kLockUpgrade);
        }
        return ++entry->count;
    }
    if (used_ == kCapacity) {
        return report(kLockTooMany);
    }
    cached_ = &entries_[used_++];
    *cached_ = {lock, 1, mode};
    return 1;
}

int FHeldLocks::remove(const void* lock, Mode mode) {
    Entry* entry = find(lock);
    if (entry == nullptr) {
        return report(kLockMisuse);
    }
    if (entry->count <= 0) {
        reportLockError(kLockMisuse);
    }
    if (--entry->count > 0) {
        return entry->count;
    }
    if (entry->mode != mode) {
        reportLockError(kLockMisuse);
    }
    *entry = {};
    cached_ = entries_; // where find has left it
    if (entry != &entries_[used_ - 1]) {
        // Its place stays behind, cleared, until the entries above it have gone.
        reportLockError(kLockMisuse);
        return 0;
    }
    while (used_ != 0 && entries_[used_ - 1].lock == nullptr) {
        --used_;
    }
    return 0;
}

FResult FHeldLocks::queryInterface(const FUIDBytes& uid, void** out) {
    if (!(uid == IBaseUnknown::iid)) {
        *out = nullptr;
        return kNoInterface;
    }
    addRef();
    *out = static_cast<IBaseUnknown*>(this);
    return kResultOk;
}

std::uint32_t FHeldLocks::addRef() {
    return ++references_;
}

std::uint32_t FHeldLocks::release() {
    const std::uint32_t left = --references_;
    if (left == 0) {
        delete this;
    }
    return left;
}

} // namespace tessera
