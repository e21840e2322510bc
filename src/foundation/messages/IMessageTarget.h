// IMessageTarget: whoever can be handed a message without being a CmObject of this module. It comes before
// CmObject::receiveMessage for an object that offers both.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IMessageAccess;

struct IMessageTarget : IBaseUnknown {
    static constexpr FUIDBytes iid = "{47082185-6D5D-4217-928D-E11DB0418A03}"_uid;

    // The message is borrowed for the call. What is returned reaches the sender of a direct delivery.
    virtual std::int32_t receiveMessage(IMessageAccess* message) = 0;

protected:
    ~IMessageTarget() = default;
};

} // namespace tessera
