#include "foundation/messages/FStringIDAttribute.h"

namespace tessera {

bool FStringIDAttribute::read(FStream& stream) {
    keyRef_ = FStringRef();
    return key_.readString(stream) && FAttributeValue::read(stream);
}

bool FStringIDAttribute::write(FStream& stream) const {
    return FString(getKey()).writeString(stream) && FAttributeValue::write(stream);
}

} // namespace tessera
