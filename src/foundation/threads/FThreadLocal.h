// FThreadLocal: a slot in which each thread keeps a reference-counted object of its own.
//
// The values of a thread that FThread started are released when its body has returned. Any other thread calls
// releaseThreadLocals() before it ends; what it leaves behind stays behind. create and destroy belong to the owner;
// set and get to any thread, each seeing its own value.
#pragma once

#include "foundation/object/IBaseUnknown.h"
#include "platform/ThreadSlots.h"

namespace tessera {

class FThreadLocal {
public:
    FThreadLocal() = default;
    FThreadLocal(const FThreadLocal&) = delete;
    FThreadLocal& operator=(const FThreadLocal&) = delete;
    // Doesn't destroy the slot: the owner does.
    ~FThreadLocal() = default;

    // False when the system has no slot left.
    bool create();
    // Values that threads still have in the slot aren't released. Without a slot nothing happens.
    void destroy();

    // Releases this thread's previous value and adds a reference to the new one, which may be null. False when the
    // platform refuses; the reference is given back then.
    bool set(IBaseUnknown* object);
    // No reference is added.
    IBaseUnknown* get() const { return static_cast<IBaseUnknown*>(platform::threadSlotValue(slot_)); }

private:
    friend void releaseThreadLocals();

    void releaseValue();

    platform::ThreadSlot slot_ = platform::kNoThreadSlot;
};

// Releases what the calling thread holds in all slots. A second call does nothing.
void releaseThreadLocals();

} // namespace tessera
