#include "foundation/threads/FThreadLocal.h"

#include "foundation/threads/FLock.h"
#include "foundation/threads/FLockGuard.h"

#include <algorithm>
#include <vector>

namespace tessera {

namespace {

struct Slots {
    FLock lock{"FLock"};
    std::vector<FThreadLocal*> all;
};

// Made on first use, which may be an initialiser of another source, and never destroyed: threads still end, and walk
// the slots, while the process goes down.
Slots& slots() {
    static Slots* const made = new Slots;
    return *made;
}

} // namespace

bool FThreadLocal::create() {
    slot_ = platform::allocateThreadSlot();
    if (slot_ == platform::kNoThreadSlot) {
        return false;
    }
    const FLockGuard guard(slots().lock);
    slots().all.push_back(this);
    return true;
}

void FThreadLocal::destroy() {
    if (slot_ == platform::kNoThreadSlot) {
        return;
    }
    const FLockGuard guard(slots().lock);
    platform::freeThreadSlot(slot_);
    slot_ = platform::kNoThreadSlot;
    std::erase(slots().all, this);
}

bool FThreadLocal::set(IBaseUnknown* object) {
    // The new one first: it may be what the old one keeps alive.
    if (object != nullptr) {
        object->addRef();
    }
    IBaseUnknown* previous = get();
    if (!platform::setThreadSlotValue(slot_, object)) {
        if (object != nullptr) {
            object->release();
        }
        return false;
    }
    if (previous != nullptr) {
        previous->release();
    }
    return true;
}

void FThreadLocal::releaseValue() {
    IBaseUnknown* value = get();
    if (value != nullptr) {
        platform::setThreadSlotValue(slot_, nullptr);
        value->release();
    }
}

void releaseThreadLocals() {
    const FLockGuard guard(slots().lock);
    const std::vector<FThreadLocal*>& all = slots().all;
    // By index: a value's destructor may make or destroy a slot. One destroyed in front moves the others up; those
    // that were released by then hold nothing.
    for (std::size_t i = 0; i < all.size();) {
        const FThreadLocal* slot = all[i];
        all[i]->releaseValue();
        i = i < all.size() && all[i] == slot ? i + 1 : 0;
    }
}

} // namespace tessera
