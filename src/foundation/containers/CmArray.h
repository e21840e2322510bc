// CmArray: a growing array of objects in the order in which they were put.
#pragma once

#include "foundation/containers/CmArrayForm.h"

namespace tessera {

class CmArray : public CmClass<CmArray, CmArrayForm> {
public:
    static FMetaClass metaClass;

    // growth: see CmArrayForm.
    explicit CmArray(std::int32_t capacity = 0, std::int32_t growth = kDefaultGrowth) : CmClass(capacity, growth) {}

    CmArray* clone() const override;

    // At the end.
    bool add(CmObject* element) override;
};

} // namespace tessera
