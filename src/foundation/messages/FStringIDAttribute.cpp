#include "foundation/messages/FStringIDAttribute.h"

namespace tessera {

FStringIDAttribute::FStringIDAttribute(const FStringRef& key, KeyHolding holding, std::uint16_t flags)
    : CmClass(flags) {
    setKey(key, holding);
}

const FStringRef& FStringIDAttribute::getKey() const {
    return keyRef_.isEmpty() ? key_ : keyRef_;
}

void FStringIDAttribute::setKey(const FStringRef& key, KeyHolding holding) {
    const bool isConstant = holding == KeyHolding::constant;
    key_ = isConstant ? FStringRef() : key;
    keyRef_ = isConstant ? key : FStringRef();
}

bool FStringIDAttribute::isEqual(const CmObject* other) const {
    const auto* attribute = cmCast<FStringIDAttribute>(other);
    return attribute != nullptr && getKey() == attribute->getKey();
}

int FStringIDAttribute::compare(const CmObject* other) const {
    const auto* attribute = cmCast<FStringIDAttribute>(other);
    return attribute != nullptr ? getKey().compare(attribute->getKey()) : CmObject::compare(other);
}

FStringIDAttribute* FStringIDAttribute::clone() const {
    return new FStringIDAttribute(*this);
}

} // namespace tessera
