// FIntList: a list of 64-bit integers as the value of an attribute.
#pragma once

#include "persistence/attributes/FAttrList.h"

#include <vector>

namespace tessera {

class FIntList : public CmClass<FIntList, FAttrList> {
public:
    static FMetaClass metaClass;

    FIntList() = default;

    FAttrListKind getKind() const override { return FAttrListKind::integers; }
    std::int32_t count() const override { return static_cast<std::int32_t>(values_.size()); }
    void append(std::int64_t value) { values_.push_back(value); }
    // 0 for a bad index.
    std::int64_t at(std::int32_t index) const;
    // False, and out untouched, at the end.
    bool next(std::int64_t& out);

    FIntList* clone() const override { return new FIntList(*this); }

private:
    std::vector<std::int64_t> values_;
};

} // namespace tessera
