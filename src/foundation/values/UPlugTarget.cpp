#include "foundation/values/UPlugTarget.h"

#include "foundation/messages/FMessage.h"
#include "foundation/values/IValueOwner.h"
#include "foundation/values/UValue.h"

namespace tessera {

std::int32_t UPlugTarget::receiveMessage(FMessage* message) {
    const bool begins = message->isMessage("BeginEdit");
    if (!begins && !message->isMessage("EndEdit")) {
        return 0;
    }
    CmObject* object = message->getObject(FStringRef("Value"));
    if (object == nullptr || !object->isTypeOf(UValue::kBindingName, true)) {
        return 1;
    }
    const auto value = queryFor<IValue>(object);
    const auto owner = queryFor<IValueOwner>(owner_.get());
    if (value && owner) {
        begins ? owner->beginEdit(value.get()) : owner->endEdit(value.get());
    }
    return 1;
}

} // namespace tessera
