#include "foundation/messages/FAttributeListObject.h"

namespace tessera {

FResult FAttributeListObject::queryInterface(const FUIDBytes& uid, void** out) {
    const bool known = uid == IAttributeList::iid || uid == IAttributeList::secondIid || uid == IBaseUnknown::iid;
    *out = known ? static_cast<IAttributeList*>(this) : nullptr;
    if (!known) {
        return kNoInterface;
    }
    addRef();
    return kResultOk;
}

std::uint32_t FAttributeListObject::addRef() {
    return count_.fetch_add(1, std::memory_order_relaxed) + 1;
}

std::uint32_t FAttributeListObject::release() {
    const std::uint32_t left = count_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) {
        delete this;
    }
    return left;
}

} // namespace tessera
