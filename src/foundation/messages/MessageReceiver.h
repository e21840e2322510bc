// MessageReceiver: whom a message is for, found out once: by what it is known, and how it is reached.
//
// A target is known by its identity, since whoever posts may hold another of its interfaces than the target itself,
// which removes its messages at its end. Nothing is referenced.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

class CmObject;
class FMessage;

struct MessageReceiver {
    // Null for a null target alone.
    IBaseUnknown* identity = nullptr;
    // The target, if it is an object of this module.
    CmObject* object = nullptr;

    static MessageReceiver of(IBaseUnknown* target);

    // Through IMessageTarget if the target answers it, else to the object; what that returns, 0 when there is neither.
    std::int32_t handOver(FMessage* message) const;
};

} // namespace tessera
