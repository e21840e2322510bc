// FStringList: a list of texts as the value of an attribute.
//
// A list either owns its texts, as 16-bit copies, or only points at texts of either width that the caller keeps for as
// long as the list lives; which of the two is settled when it is made, and a text that comes the other way is refused.
// A copy owns its texts.
#pragma once

#include "foundation/messages/FAttributeValue.h"
#include "persistence/attributes/FAttrList.h"

#include <vector>

namespace tessera {

class FStringList : public CmClass<FStringList, FAttrList> {
public:
    static FMetaClass metaClass;

    using TextHolding = FAttributeValue::TextHolding;

    explicit FStringList(TextHolding holding = TextHolding::copied) : ownsText_(holding == TextHolding::copied) {}
    FStringList(const FStringList& other);
    ~FStringList() override;

    FAttrListKind getKind() const override { return FAttrListKind::strings; }
    std::int32_t count() const override { return static_cast<std::int32_t>(texts_.size()); }
    bool ownsText() const { return ownsText_; }
    // Whether a text of 16 bits is in here; an owning list counts as such.
    bool isWide() const;
    // False when the list holds its texts the other way, or without memory. 8-bit text that means nothing in the
    // system's code page is copied as it is. A text that is only pointed at ends with a NUL.
    bool append(const FStringRef& text, TextHolding holding = TextHolding::copied);
    // A null view for a bad index.
    FStringRef at(std::int32_t index) const;
    // False, and out untouched, at the end. The view is the list's.
    bool next(FStringRef& out);

    FStringList* clone() const override { return new FStringList(*this); }

private:
    std::vector<FStringRef> texts_;
    bool ownsText_;
};

} // namespace tessera
