// FAttrBuffer: bytes that somebody else owns, as an object, so that a tree can carry them without a copy. The bytes
// have to outlive every tree that holds this; FAttributes::detachObjects makes a copy of them.
#pragma once

#include "foundation/object/CmClass.h"

#include <cstdint>

namespace tessera {

class FAttrBuffer : public CmClass<FAttrBuffer, CmObject> {
public:
    static FMetaClass metaClass;

    FAttrBuffer(const void* data, std::int32_t size) : data_(data), size_(size) {}

    const std::uint8_t* getData() const { return static_cast<const std::uint8_t*>(data_); }
    std::int32_t getSize() const { return size_; }

    FAttrBuffer* clone() const override { return new FAttrBuffer(data_, size_); }

private:
    const void* data_;
    std::int32_t size_;
};

} // namespace tessera
