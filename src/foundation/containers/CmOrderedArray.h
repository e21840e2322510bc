// CmOrderedArray: an array kept sorted by compare; equal elements stand in the order in which they came.
//
// Look-ups are binary searches, so a key must not change while its element is in here, or sort() has to follow.
#pragma once

#include "foundation/containers/CmArrayForm.h"

namespace tessera {

class CmOrderedArray : public CmClass<CmOrderedArray, CmArrayForm> {
public:
    static FMetaClass metaClass;

    // growth: see CmArrayForm.
    explicit CmOrderedArray(std::int32_t capacity = 0, std::int32_t growth = kDefaultGrowth)
        : CmClass(capacity, growth) {}

    CmOrderedArray* clone() const override;

    // Behind all elements that sort at or below the new one.
    bool add(CmObject* element) override;
    // One that is equal.
    bool remove(CmObject* element) override;
    bool contains(const CmObject* element) const override { return indexOf(element) >= 0; }
    // The first of the equal ones. Fewer than three elements are searched by isEqual; more by compare, and then back by
    // isEqual, so an element whose compare calls it equal is found there even if isEqual doesn't.
    std::int32_t indexOf(const CmObject* element) const override;
    // False when the element would stand out of order there.
    bool insertAt(std::int32_t index, CmObject* element) override;
    bool setAt(std::int32_t index, CmObject* element) override;

    // Where add would put the element.
    std::int32_t insertionIndex(const CmObject* element) const;

private:
    bool fitsBetween(std::int32_t below, const CmObject* element, std::int32_t above) const;
};

} // namespace tessera
