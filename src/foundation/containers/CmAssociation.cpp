#include "foundation/containers/CmAssociation.h"

namespace tessera {

bool CmAssociation::isEqual(const CmObject* other) const {
    const auto* partner = cmCast<CmAssociation>(other);
    return key_ != nullptr && partner != nullptr && partner->key_ != nullptr && key_->isEqual(partner->key_);
}

int CmAssociation::compare(const CmObject* other) const {
    const auto* partner = cmCast<CmAssociation>(other);
    return key_ != nullptr && partner != nullptr && partner->key_ != nullptr ? key_->compare(partner->key_) : -1;
}

CmAssociation* CmAssociation::clone() const {
    return new CmAssociation(key_ != nullptr ? key_->clone() : nullptr, value_ != nullptr ? value_->clone() : nullptr);
}

} // namespace tessera
