// FIntIDAttribute: a value under a 32-bit number. Equality and order go by the number, which counts as unsigned.
#pragma once

#include "foundation/messages/FAttributeValue.h"

namespace tessera {

class FIntIDAttribute : public CmClass<FIntIDAttribute, FAttributeValue> {
public:
    static FMetaClass metaClass;

    explicit FIntIDAttribute(std::uint32_t id = 0, std::uint16_t flags = 0);

    std::uint32_t getId() const { return id_; }
    void setId(std::uint32_t id) { id_ = id; }

    bool isEqual(const CmObject* other) const override;
    int compare(const CmObject* other) const override;
    FIntIDAttribute* clone() const override;
    bool read(FStream& stream) override;
    bool write(FStream& stream) const override;

private:
    std::uint32_t id_;
};

} // namespace tessera
