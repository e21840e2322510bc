#include "persistence/objects/StreamText.h"

#include "foundation/text/FString.h"
#include "persistence/streams/FStream.h"

#include <cstring>

namespace tessera {

bool writeStreamText(FStream& stream, const FStringRef& text) {
    if (text.isWide()) {
        return FString(text).writeString(stream);
    }
    const std::string_view bytes = text.view8();
    if (bytes.empty()) {
        return stream.writeInt32(0);
    }
    // 30 bits of length, so neither the count nor the size overflows. Behind a stretch of a longer text stands no NUL.
    const auto size = static_cast<std::int32_t>(bytes.size()) + 1;
    char block[256];
    if (bytes.size() < sizeof block) {
        std::memcpy(block, bytes.data(), bytes.size());
        block[bytes.size()] = '\0';
        return stream.writeInt32(size) && stream.write(block, size) == size;
    }
    return stream.writeInt32(size) && stream.write(bytes.data(), size - 1) == size - 1 && stream.writeChar8('\0');
}

} // namespace tessera
