#include "foundation/containers/CmBTreeDictionary.h"

#include "foundation/containers/CmBTreeNode.h"

#include <new>

namespace tessera {

namespace {

const CmObject* keyOf(const CmObject* element) {
    return static_cast<const CmAssociation*>(element)->getKey();
}

// Looks for a key as an association with that key would: add lets nothing in here but associations with a key.
struct KeyProbe {
    const CmObject* key;
    int compare(const CmObject* element) const { return key->compare(keyOf(element)); }
    bool isEqual(const CmObject* element) const { return keyOf(element)->isEqual(key); }
};

} // namespace

CmBTreeDictionary::~CmBTreeDictionary() {
    // Here and not in the tree's destructor, where dropKey would no longer know of keys and values.
    removeAll();
}

CmBTreeDictionary* CmBTreeDictionary::clone() const {
    auto* copy = new CmBTreeDictionary(getOrder());
    copy->copyFrom(*this);
    return copy;
}

bool CmBTreeDictionary::copyFrom(const CmContainer& other) {
    if (&other == this || other.getOwnership() == CmOwnership::owner) {
        return CmBTree::copyFrom(other);
    }
    setOwnership(other.getOwnership());
    bool complete = true;
    const auto iterator = other.newIterator();
    while (const CmObject* element = iterator->next()) {
        const auto* association = cmCast<CmAssociation>(element);
        if (association == nullptr || !set(association->getKey(), association->getValue())) {
            complete = false;
        }
    }
    return complete;
}

bool CmBTreeDictionary::add(CmObject* element) {
    const auto* association = cmCast<CmAssociation>(element);
    if (association == nullptr || association->getKey() == nullptr) {
        return false;
    }
    Position equal;
    const Place place = placeFor(KeyProbe{association->getKey()}, &equal);
    return equal.node == nullptr && insertAtPlace(place, element);
}

bool CmBTreeDictionary::set(CmObject* key, CmObject* value) {
    if (key == nullptr) {
        return false;
    }
    Position equal;
    const Place place = placeFor(KeyProbe{key}, &equal);
    if (equal.node != nullptr) {
        return false;
    }
    auto* association = new (std::nothrow) CmAssociation(key, value);
    if (association == nullptr) {
        return false;
    }
    if (!insertAtPlace(place, association)) {
        association->release();
        return false;
    }
    if (getOwnership() == CmOwnership::none) {
        association->maker_ = this;
    }
    if (getOwnership() == CmOwnership::shared) {
        // The tree holds a reference of its own now.
        association->release();
    }
    return true;
}

bool CmBTreeDictionary::replace(CmObject* key, CmObject* value) {
    CmAssociation* association = getAssociation(key);
    if (association == nullptr) {
        return false;
    }
    CmObject* old = association->getValue();
    // The new one first: it may be the old one.
    if (value != nullptr) {
        retain(value);
    }
    association->setValue(value);
    if (old != nullptr) {
        drop(old);
    }
    return true;
}

bool CmBTreeDictionary::removeKey(const CmObject* key) {
    return removeAtPosition(locateKey(key));
}

CmObject* CmBTreeDictionary::get(const CmObject* key) const {
    const CmAssociation* association = getAssociation(key);
    return association != nullptr ? association->getValue() : nullptr;
}

CmAssociation* CmBTreeDictionary::getAssociation(const CmObject* key) const {
    return static_cast<CmAssociation*>(elementAt(locateKey(key)));
}

CmBTree::Position CmBTreeDictionary::locateKey(const CmObject* key) const {
    Position equal;
    if (key != nullptr) {
        placeFor(KeyProbe{key}, &equal);
    }
    return equal;
}

void CmBTreeDictionary::retainKey(CmObject* element) const {
    const auto* association = static_cast<const CmAssociation*>(element);
    retain(association->getKey());
    if (association->getValue() != nullptr) {
        retain(association->getValue());
    }
    retain(element);
}

void CmBTreeDictionary::dropKey(CmObject* element) const {
    auto* association = static_cast<CmAssociation*>(element);
    CmObject* key = association->getKey();
    CmObject* value = association->getValue();
    if (association->maker_ == this && getOwnership() == CmOwnership::none) {
        // Whoever else holds it may give it back to this dictionary, as its own then.
        association->maker_ = nullptr;
        association->release();
    } else {
        drop(element);
    }
    drop(key);
    if (value != nullptr) {
        drop(value);
    }
}

void CmBTreeDictionary::discard(CmObject* element) const {
    // The association refers to its key and value without owning them; here they came with it.
    if (const auto* association = cmCast<CmAssociation>(element)) {
        for (CmObject* part : {association->getKey(), association->getValue()}) {
            if (part != nullptr) {
                part->release();
            }
        }
    }
    element->release();
}

} // namespace tessera
