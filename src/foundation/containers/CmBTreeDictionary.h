// CmBTreeDictionary: values by key in a tree; each key stands once. Its elements are CmAssociations.
//
// Ownership covers three objects per entry: the association, its key and its value. none: they're only pointed at, but
// an association that set() made goes when its key is removed, and one that add() took must live as long as it's in
// here. owner: all three are handed over. shared: all three get a reference when they come and lose it when they go.
#pragma once

#include "foundation/containers/CmAssociation.h"
#include "foundation/containers/CmBTree.h"

namespace tessera {

class CmBTreeDictionary : public CmClass<CmBTreeDictionary, CmBTree> {
public:
    static FMetaClass metaClass;

    explicit CmBTreeDictionary(std::int32_t order = kMinimumOrder) : CmClass(order) {}
    ~CmBTreeDictionary() override;

    CmBTreeDictionary* clone() const override;

    // Shares keys and values with a container that doesn't own them, but no association: each copy makes its own.
    bool copyFrom(const CmContainer& other) override;

    // False for what is no CmAssociation, and for a key that is there.
    bool add(CmObject* element) override;

    // A new entry; false, and nothing changed, for a null key and for one that is there.
    bool set(CmObject* key, CmObject* value);
    // Another value for a key that is there; the old one is dropped.
    bool replace(CmObject* key, CmObject* value);
    bool removeKey(const CmObject* key);
    // The value, or null.
    CmObject* get(const CmObject* key) const;
    CmAssociation* getAssociation(const CmObject* key) const;
    bool containsKey(const CmObject* key) const { return getAssociation(key) != nullptr; }
    // 1 or 0.
    std::int32_t countKey(const CmObject* key) const { return containsKey(key) ? 1 : 0; }

protected:
    void retainKey(CmObject* element) const override;
    void dropKey(CmObject* element) const override;
    void discard(CmObject* element) const override;

private:
    Position locateKey(const CmObject* key) const;
};

} // namespace tessera
