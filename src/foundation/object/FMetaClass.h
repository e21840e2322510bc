// FMetaClass: the static record of one class: its name, identifier, factory and base class.
//
// One object with static storage per class; constructing it enters the class in ClassFactory. All records of a layer
// are defined in one source (FoundationClassRecords.cpp and its sisters), so that their order is fixed. A record
// without factory and without parent can't be used for anything and stays out of the registry.
//
// What the factory hands out: one reference, as a CmObject* when the class has no identifier, else as the pointer to
// the interface that the identifier names. Null for an abstract class.
#pragma once

#include "foundation/object/FUID.h"

#include <cstdint>

namespace tessera {

class FMetaClass {
public:
    using Factory = void* (*)();

    FMetaClass(const char* name, const FMetaClass* parent, Factory factory, const FUIDBytes& classUID = {});
    // A second name under which objects of the aliased class are found, and the one that they are written with.
    FMetaClass(const char* alias, FMetaClass& aliased);
    FMetaClass(const FMetaClass&) = delete;
    FMetaClass& operator=(const FMetaClass&) = delete;
    ~FMetaClass();

    const char* getName() const { return name_; }
    const char* getPersistentName() const { return persistentName_; }
    const FUID& getClassUID() const { return classUID_; }
    Factory getFactory() const { return factory_; }
    const FMetaClass* getParent() const { return parent_; }
    std::uint16_t getFlags() const { return flags_; }

    // Whether className names this class or, with askBase, one of its bases up to the root of all, "FObject".
    bool isTypeOf(const char* className, bool askBase) const;

private:
    void enter();

    const char* name_;
    const char* persistentName_;
    FUID classUID_;
    Factory factory_;
    const FMetaClass* parent_;
    std::uint16_t flags_ = 0;
};

} // namespace tessera
