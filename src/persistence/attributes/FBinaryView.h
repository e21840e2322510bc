// FBinaryView: the bytes of an object that counts as binary data: CmBuffer (its used part), FMemoryStream (from its
// start to its size, wherever it stands) and FAttrBuffer. They belong to the object and stand until it changes.
#pragma once

#include <cstdint>

namespace tessera {

class CmObject;

struct FBinaryView {
    const std::uint8_t* data = nullptr;
    std::int32_t size = 0;

    // False, and out untouched, for null and for any other object.
    static bool of(const CmObject* object, FBinaryView& out);
};

} // namespace tessera
