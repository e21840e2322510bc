#include "persistence/attributes/FXmlObject.h"

namespace tessera {

bool FXmlObject::isEqual(const CmObject* other) const {
    const auto* object = cmCast<FXmlObject>(other);
    return object != nullptr && id_ == object->id_;
}

int FXmlObject::compare(const CmObject* other) const {
    const auto* object = cmCast<FXmlObject>(other);
    if (object == nullptr) {
        return CmObject::compare(other);
    }
    return id_ < object->id_ ? -1 : id_ > object->id_ ? 1 : 0;
}

// IDs are mostly addresses, whose low bits say nothing.
std::uint32_t FXmlObject::hash(std::uint32_t tableSize) const {
    return tableSize != 0 ? static_cast<std::uint32_t>((id_ >> 4) % tableSize) : 0;
}

CmObject* FXmlObject::resolve(CmObject* object) {
    auto* standIn = cmCast<FXmlObject>(object);
    return standIn != nullptr ? standIn->getObject() : object;
}

} // namespace tessera
