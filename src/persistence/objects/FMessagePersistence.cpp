// The name, a 32-bit count, and that many attributes without their class. Attributes that are marked transient, and
// bare pointers, stay behind.
#include "foundation/containers/CmOrderedArray.h"
#include "foundation/messages/FMessage.h"
#include "persistence/streams/FStream.h"

namespace tessera {
namespace {

bool isWritten(const FAttributeValue& attribute) {
    return !attribute.hasType(AttributeBits::kTransient | AttributeBits::kPointer);
}

} // namespace

bool FMessage::write(FStream& stream) const {
    std::int32_t count = 0;
    for (std::int32_t i = 0; i < getAttributeCount(); ++i) {
        count += isWritten(*attributeAt(i)) ? 1 : 0;
    }
    if (!name_.writeString(stream) || !stream.writeInt32(count)) {
        return false;
    }
    for (std::int32_t i = 0; i < getAttributeCount(); ++i) {
        const FStringIDAttribute* attribute = attributeAt(i);
        if (isWritten(*attribute) && !attribute->write(stream)) {
            return false;
        }
    }
    return true;
}

bool FMessage::read(FStream& stream) {
    attributes_.reset();
    std::int32_t count = 0;
    if (!name_.readString(stream) || !stream.readInt32(count) || count < 0) {
        return false;
    }
    for (std::int32_t i = 0; i < count; ++i) {
        auto attribute = FRefPtr<FStringIDAttribute>::adopt(new FStringIDAttribute);
        if (!attribute->read(stream) || !addAttribute(attribute.detach())) {
            return false;
        }
    }
    return true;
}

} // namespace tessera
