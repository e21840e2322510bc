// CmClass: what each subclass of CmObject would otherwise spell out by hand: the answers to the class questions, out of
// its static record, and the three standard operations once more for each further interface.
//
//     class CmUID : public CmClass<CmUID, CmObject> { public: static FMetaClass metaClass; ... };
//     class UHostList : public CmClass<UHostList, CmObject, IHostList> { ... };
//
// It adds no virtual operation, so the order of a class's table is the order in which the classes declare theirs. An
// interface is answered under its iid; a class that answers to further identifiers overrides queryInterface, and asks
// its CmClass for the rest.
#pragma once

#include "foundation/object/CmObject.h"

namespace tessera {

// The interface table of an FObject subclass without a class record.
template <class Base, class... Interfaces>
class FImplements : public Base, public Interfaces... {
public:
    using Base::Base;

    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        return (answer<Interfaces>(uid, out) || ...) ? kResultOk : Base::queryInterface(uid, out);
    }
    std::uint32_t addRef() override { return this->addReference(); }
    std::uint32_t release() override { return this->releaseReference(); }

private:
    template <class Interface>
    bool answer(const FUIDBytes& uid, void** out) {
        if (!(uid == Interface::iid)) {
            return false;
        }
        this->addReference();
        *out = static_cast<Interface*>(this);
        return true;
    }
};

template <class Base>
class FImplements<Base> : public Base {
public:
    using Base::Base;
};

template <class Self, class Base, class... Interfaces>
class CmClass : public FImplements<Base, Interfaces...> {
public:
    using FImplements<Base, Interfaces...>::FImplements;

    const char* getClassName() const override { return Self::metaClass.getName(); }
    bool isTypeOf(const char* className, bool askBase) const override {
        return Self::metaClass.isTypeOf(className, askBase);
    }
    FMetaClass* getMetaClass() const override { return &Self::metaClass; }
};

// The factory of a class that is created by name.
template <class T>
void* createCmObject() {
    return static_cast<CmObject*>(new T);
}

// The factory of a class that is created by identifier: what comes back is the interface.
template <class T, class Interface>
void* createInterface() {
    return static_cast<Interface*>(new T);
}

} // namespace tessera
