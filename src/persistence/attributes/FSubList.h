// FSubList: a list of trees as the value of an attribute. It holds a reference of each.
#pragma once

#include "persistence/attributes/FAttrList.h"

#include <vector>

namespace tessera {

class FAttributes;

class FSubList : public CmClass<FSubList, FAttrList> {
public:
    static FMetaClass metaClass;

    FSubList() = default;
    // With copies of the trees.
    FSubList(const FSubList& other);
    ~FSubList() override;

    FAttrListKind getKind() const override { return FAttrListKind::subs; }
    std::int32_t count() const override { return static_cast<std::int32_t>(trees_.size()); }
    // Takes the caller's reference over. False for null.
    bool append(FAttributes* tree);
    // Borrowed; null for a bad index.
    FAttributes* at(std::int32_t index) const;
    // Borrowed; null at the end, and then the cursor stands at the start again.
    FAttributes* next();

    FSubList* clone() const override { return new FSubList(*this); }

private:
    std::vector<FAttributes*> trees_;
};

} // namespace tessera
