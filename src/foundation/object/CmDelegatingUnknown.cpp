#include "foundation/object/CmDelegatingUnknown.h"

namespace tessera {

CmDelegatingUnknown::CmDelegatingUnknown(IBaseUnknown* object, Owner* owner) : object_(object), owner_(owner) {}

CmDelegatingUnknown::~CmDelegatingUnknown() {
    if (owner_ != nullptr) {
        owner_->removeDelegate(this);
    }
}

bool CmDelegatingUnknown::isEqual(const CmObject* other) const {
    const auto* delegate = cmCast<CmDelegatingUnknown>(other);
    return delegate != nullptr ? object_ == delegate->object_ : this == other;
}

} // namespace tessera
