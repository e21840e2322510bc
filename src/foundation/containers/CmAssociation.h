// CmAssociation: a key and a value, the element of a CmBTreeDictionary. It only points at both: whoever puts it into a
// container keeps or hands over what it refers to. Equality and order look at the key alone.
#pragma once

#include "foundation/object/CmClass.h"

namespace tessera {

class CmBTreeDictionary;

class CmAssociation : public CmClass<CmAssociation, CmObject> {
public:
    static FMetaClass metaClass;

    CmAssociation() = default;
    CmAssociation(CmObject* key, CmObject* value) : key_(key), value_(value) {}

    CmObject* getKey() const { return key_; }
    CmObject* getValue() const { return value_; }
    void setKey(CmObject* key) { key_ = key; }
    void setValue(CmObject* value) { value_ = value; }

    // False without a key here, and for a partner that is no association.
    bool isEqual(const CmObject* other) const override;
    // -1 in those two cases.
    int compare(const CmObject* other) const override;
    // Key and value are new objects whose references go with the association to whoever gets it: a dictionary that owns
    // takes all three over, anybody else has three objects to release.
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;
    // Clones key and value too.
    CmAssociation* clone() const override;

private:
    friend class CmBTreeDictionary;

    CmObject* key_ = nullptr;
    CmObject* value_ = nullptr;
    // The dictionary that owns nothing, made this one itself, and has to release it when it leaves; others that point
    // at it don't.
    const CmBTreeDictionary* maker_ = nullptr;
};

} // namespace tessera
