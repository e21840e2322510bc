#include "foundation/messages/FIntIDAttribute.h"

namespace tessera {

FIntIDAttribute::FIntIDAttribute(std::uint32_t id, std::uint16_t flags) : CmClass(flags), id_(id) {}

bool FIntIDAttribute::isEqual(const CmObject* other) const {
    const auto* attribute = cmCast<FIntIDAttribute>(other);
    return attribute != nullptr && id_ == attribute->id_;
}

int FIntIDAttribute::compare(const CmObject* other) const {
    const auto* attribute = cmCast<FIntIDAttribute>(other);
    if (attribute == nullptr) {
        return CmObject::compare(other);
    }
    return id_ < attribute->id_ ? -1 : id_ > attribute->id_ ? 1 : 0;
}

FIntIDAttribute* FIntIDAttribute::clone() const {
    return new FIntIDAttribute(*this);
}

} // namespace tessera
