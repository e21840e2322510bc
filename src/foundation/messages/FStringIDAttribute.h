// FStringIDAttribute: a value under a text. Equality and order go by the text, case sensitive.
//
// A key that is a static constant is only pointed at, so that entering and finding it copies nothing; any other key is
// copied. KeyHolding tells which it is.
#pragma once

#include "foundation/messages/FAttributeValue.h"

namespace tessera {

enum class KeyHolding { copied, constant };

class FStringIDAttribute : public CmClass<FStringIDAttribute, FAttributeValue> {
public:
    static FMetaClass metaClass;

    FStringIDAttribute() = default;
    explicit FStringIDAttribute(const FStringRef& key, KeyHolding holding = KeyHolding::copied,
                                std::uint16_t flags = 0);
    FStringIDAttribute(const FStringIDAttribute& other) = default;

    const FStringRef& getKey() const;
    void setKey(const FStringRef& key, KeyHolding holding = KeyHolding::copied);

    bool isEqual(const CmObject* other) const override;
    int compare(const CmObject* other) const override;
    FStringIDAttribute* clone() const override;
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;

private:
    // The one of the two that isn't empty is used.
    FString key_;
    FStringRef keyRef_;
};

} // namespace tessera
