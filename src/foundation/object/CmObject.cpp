#include "foundation/object/CmObject.h"

#include <cstdint>
#include <functional>

namespace tessera {

void CmObject::update(IBaseUnknown* changed, std::int32_t message) {
    if (CmObject* object = asCmObject(changed)) {
        updateFrom(object, message);
    }
}

const char* CmObject::getClassName() const {
    return metaClass.getName();
}

bool CmObject::isTypeOf(const char* className, bool askBase) const {
    return metaClass.isTypeOf(className, askBase);
}

bool CmObject::isEqual(const CmObject* other) const {
    return this == other;
}

int CmObject::compare(const CmObject* other) const {
    if (this == other) {
        return 0;
    }
    return std::greater<const CmObject*>()(this, other) ? 1 : -1;
}

std::uint32_t CmObject::hash(std::uint32_t tableSize) const {
    if (tableSize == 0) {
        return 0;
    }
    return static_cast<std::uint32_t>((reinterpret_cast<std::uintptr_t>(this) >> 4) % tableSize);
}

void CmObject::updateFrom(CmObject*, std::int32_t) {}

bool CmObject::read(FStream&) {
    return true;
}

bool CmObject::write(FStream&) const {
    return true;
}

bool CmObject::storeAttributes(FAttributes&) const {
    return false;
}

bool CmObject::restoreAttributes(FAttributes&) {
    return false;
}

std::int32_t CmObject::receiveMessage(FMessage*) {
    return 0;
}

FMetaClass* CmObject::getMetaClass() const {
    return &metaClass;
}

CmObject* CmObject::clone() const {
    return new CmObject;
}

CmObject* asCmObject(IBaseUnknown* unknown) {
    if (unknown == nullptr) {
        return nullptr;
    }
    void* found = nullptr;
    if (unknown->queryInterface(FObject::privateUID(), &found) != kResultOk || found == nullptr) {
        return nullptr;
    }
    auto* object = static_cast<FObject*>(found);
    // The pointer is lent, not given: whoever asked holds a reference of its own.
    object->release();
    return object->isTypeOf(CmObject::metaClass.getName(), true) ? static_cast<CmObject*>(object) : nullptr;
}

} // namespace tessera
