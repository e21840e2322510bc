// ClassFactory: the process-wide registry of class records; turns a class name or a class identifier into a new object.
//
// Records enter themselves while the statics of the program are initialised, on one thread; afterwards the registry is
// only read, from any thread. It points at the records and owns none. A record with an identifier hands out the
// interface of that identifier, whichever way it was found; only a record without one may be taken for a CmObject,
// which createObject sees to.
#pragma once

#include "foundation/object/FObject.h"
#include "foundation/object/FUID.h"

#include <memory>
#include <vector>

namespace tessera {

class CmObject;
class FMetaClass;
struct IStringSource;

class ClassFactory : public FObject {
public:
    // Borrowed. Null at the end of the process, once the singleton list has gone down.
    static ClassFactory* getInstance(bool create);

    ClassFactory();
    ~ClassFactory() override;
    const char* getClassName() const override;
    bool isTypeOf(const char* className, bool askBase) const override;

    void addClass(FMetaClass* record);
    void removeClass(FMetaClass* record);

    FMetaClass* findByName(const char* name) const;
    FMetaClass* findByUID(const FUIDBytes& uid) const;

    // What the record's factory gives, with one reference for the caller; null when there is no such record or it has
    // no factory. A name that isn't registered and looks like FUID::toString is taken for that identifier.
    void* createInstance(const FUIDBytes& uid) const;
    void* createInstance(const char* name) const;
    // The same for a class that is known by name alone; null for any other.
    CmObject* createObject(const char* name) const;

    // Writes the name under which the object is stored: with useRegistry the one that the registry gives, without it
    // the plain class name. A foreign object is stored under its class identifier. False when there is no such name.
    bool getPersistentClassName(IBaseUnknown* object, IStringSource* target, bool useRegistry) const;

    // Every registered record once: for checks over all of them.
    std::vector<const FMetaClass*> getRecords() const;

private:
    class Tables;

    FMetaClass* recordOf(const char* name) const;

    std::unique_ptr<Tables> tables_;
};

} // namespace tessera
