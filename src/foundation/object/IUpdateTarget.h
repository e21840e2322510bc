// IUpdateTarget: whatever can be told that an object has changed; the base of every FObject.
//
// update runs on the thread that tells the change, with no lock of the notification held: the target may add and remove
// dependents from inside it, itself included.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

// A change is told as a 32-bit code. This one says that the object is being destroyed; what the others mean is private
// to whoever sends them.
inline constexpr std::int32_t kObjectDestroyed = 2;

struct IUpdateTarget : IBaseUnknown {
    static constexpr FUIDBytes iid = "{F52B7AAE-DE72-416D-8AF1-8ACE9DD7BD5E}"_uid;

    // changed: the object that has changed, borrowed for the call.
    virtual void update(IBaseUnknown* changed, std::int32_t message) = 0;

protected:
    ~IUpdateTarget() = default;
};

} // namespace tessera
