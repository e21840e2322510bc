#include "foundation/messages/MessageReceiver.h"

#include "foundation/messages/FMessage.h"
#include "foundation/messages/IMessageTarget.h"
#include "foundation/object/FRefPtr.h"

namespace tessera {

MessageReceiver MessageReceiver::of(IBaseUnknown* target) {
    if (CmObject* object = asCmObject(target)) {
        return {object, object};
    }
    const auto identity = queryFor<IBaseUnknown>(target);
    return {identity ? identity.get() : target, nullptr};
}

std::int32_t MessageReceiver::handOver(FMessage* message) const {
    if (const auto target = queryFor<IMessageTarget>(identity)) {
        return target->receiveMessage(message);
    }
    return object != nullptr ? object->receiveMessage(message) : 0;
}

} // namespace tessera
