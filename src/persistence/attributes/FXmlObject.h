// FXmlObject: what stands in a tree that was read in place of an object: FXmlInstance for one that the document
// defines, FXmlReference for one that it only names by its ID.
//
// The ID is what the writer gave the object within its document; equality, order and hash go by it alone.
#pragma once

#include "foundation/object/CmClass.h"

#include <cstdint>

namespace tessera {

class FAttributes;

class FXmlObject : public CmClass<FXmlObject, CmObject> {
public:
    static FMetaClass metaClass;

    explicit FXmlObject(std::uint64_t id = 0) : id_(id) {}

    std::uint64_t getID() const { return id_; }
    void setID(std::uint64_t id) { id_ = id; }

    // The live object, made now if need be. Borrowed; null when there is none to be had.
    virtual CmObject* getObject() { return nullptr; }
    // What was read and not yet built. Borrowed; may be null.
    virtual FAttributes* getAttributes() { return nullptr; }
    virtual bool isClass(const char*) const { return false; }

    bool isEqual(const CmObject* other) const override;
    int compare(const CmObject* other) const override;
    std::uint32_t hash(std::uint32_t tableSize) const override;

    // What the object stands for, if it is an FXmlObject; otherwise the object itself. Borrowed.
    static CmObject* resolve(CmObject* object);

private:
    std::uint64_t id_;
};

} // namespace tessera
