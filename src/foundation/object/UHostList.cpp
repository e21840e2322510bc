#include "foundation/object/UHostList.h"

namespace tessera {

UHostList::UHostList(const UHostList& other) : CmClass(other), entries_(other.entries_) {
    for (IBaseUnknown* entry : entries_) {
        entry->addRef();
    }
}

UHostList::~UHostList() {
    for (IBaseUnknown* entry : entries_) {
        entry->release();
    }
}

void UHostList::add(IBaseUnknown* object) {
    if (object != nullptr && entries_.add(object)) {
        object->addRef();
    }
}

void UHostList::remove(IBaseUnknown* object) {
    if (entries_.remove(object)) {
        object->release();
    }
}

int UHostList::compare(const CmObject* other) const {
    const auto* list = cmCast<UHostList>(other);
    if (list == nullptr) {
        return 1;
    }
    for (std::int32_t i = 0; i < entries_.getCount(); ++i) {
        CmObject* own = asCmObject(entries_.at(i));
        CmObject* others = asCmObject(list->entries_.at(i));
        // What is null, or no CmObject, can't be asked for its order.
        if (own == nullptr) {
            return -1;
        }
        if (others == nullptr) {
            return 1;
        }
        if (const int order = own->compare(others)) {
            return order;
        }
    }
    return 0;
}

UHostList* UHostList::clone() const {
    return new UHostList(*this);
}

} // namespace tessera
