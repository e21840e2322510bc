#include "persistence/attributes/FObjectList.h"

#include "persistence/attributes/FXmlObject.h"

namespace tessera {

FObjectList::FObjectList(const FObjectList& other) : CmClass(other), objects_(other.objects_), owning_(other.owning_) {
    if (isOwning()) {
        for (CmObject* object : objects_) {
            object->addRef();
        }
    }
}

FObjectList::~FObjectList() {
    if (isOwning()) {
        for (CmObject* object : objects_) {
            object->release();
        }
    }
}

bool FObjectList::append(CmObject* object) {
    if (object == nullptr) {
        return false;
    }
    objects_.push_back(object);
    return true;
}

CmObject* FObjectList::at(std::int32_t index) const {
    return index >= 0 && index < count() ? objects_[static_cast<std::size_t>(index)] : nullptr;
}

bool FObjectList::next(CmObject*& out) {
    if (cursor_ >= count()) {
        return false;
    }
    out = FXmlObject::resolve(at(cursor_++));
    return true;
}

} // namespace tessera
