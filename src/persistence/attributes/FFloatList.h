// FFloatList: a list of 64-bit floats as the value of an attribute.
#pragma once

#include "persistence/attributes/FAttrList.h"

#include <vector>

namespace tessera {

class FFloatList : public CmClass<FFloatList, FAttrList> {
public:
    static FMetaClass metaClass;

    FFloatList() = default;

    FAttrListKind getKind() const override { return FAttrListKind::floats; }
    std::int32_t count() const override { return static_cast<std::int32_t>(values_.size()); }
    void append(double value) { values_.push_back(value); }
    // 0 for a bad index.
    double at(std::int32_t index) const;
    // False, and out untouched, at the end.
    bool next(double& out);

    FFloatList* clone() const override { return new FFloatList(*this); }

private:
    std::vector<double> values_;
};

} // namespace tessera
