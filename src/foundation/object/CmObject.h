// CmObject: the second root: equality, order, hashing, persistence, messages and a class record. Whatever lives in a
// container, is saved or receives messages is a CmObject.
//
// Subclasses derive through CmClass, which answers the class questions from the static record metaClass; they override
// clone when they can be copied. Containers hand over and keep references as their ownership value says.
#pragma once

#include "foundation/object/FMetaClass.h"
#include "foundation/object/FObject.h"

namespace tessera {

class FAttributes;
class FMessage;
class FStream;

class CmObject : public FObject {
public:
    static FMetaClass metaClass;

    // Calls updateFrom when the changed object is a CmObject of this module.
    void update(IBaseUnknown* changed, std::int32_t message) override;
    const char* getClassName() const override;
    bool isTypeOf(const char* className, bool askBase) const override;

    // Identity here; by value in classes that have one.
    virtual bool isEqual(const CmObject* other) const;
    // Below 0, 0 or above 0: this object sorts before, with or after the other. By address here.
    virtual int compare(const CmObject* other) const;
    // A number below tableSize; 0 for a table size of 0. By address here.
    virtual std::uint32_t hash(std::uint32_t tableSize) const;
    virtual void updateFrom(CmObject* changed, std::int32_t message);
    // The binary form. False as soon as the stream fails; what has been read by then is in the object.
    virtual bool read(FStream& stream);
    virtual bool write(FStream& stream) const;
    // The form as a tree of named values. False here: the class has no such form.
    virtual bool storeAttributes(FAttributes& attributes) const;
    virtual bool restoreAttributes(FAttributes& attributes);
    // A message that was sent or posted to this object, borrowed for the call. What is returned reaches the sender of a
    // direct delivery.
    virtual std::int32_t receiveMessage(FMessage* message);
    virtual FMetaClass* getMetaClass() const;
    // A new object with one reference for the caller; a plain CmObject where a subclass can't be copied.
    virtual CmObject* clone() const;
};

// The cast used throughout: null for null, for objects of other modules and for what is no CmObject. The result is
// borrowed: the caller must hold a reference of its own.
CmObject* asCmObject(IBaseUnknown* unknown);
inline CmObject* asCmObject(FObject* object) {
    return asCmObject(static_cast<IBaseUnknown*>(object));
}

// The object as a T, which has a class record of its own, or null.
template <class T>
T* cmCast(CmObject* object) {
    return object != nullptr && object->isTypeOf(T::metaClass.getName(), true) ? static_cast<T*>(object) : nullptr;
}
template <class T>
const T* cmCast(const CmObject* object) {
    return object != nullptr && object->isTypeOf(T::metaClass.getName(), true) ? static_cast<const T*>(object)
                                                                               : nullptr;
}

} // namespace tessera
