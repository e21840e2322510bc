// Messages come back from streams with objects of any registered class in them. What was read can be written, and what
// was written is read again to the same attributes and the same length. Bytes may differ: some containers keep their
// elements by address.
//
// Hash tables are left out: a few bytes may ask for a million buckets, and so for all the memory there is.
#include "foundation/messages/FMessage.h"
#include "persistence/streams/FMemoryStream.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (size > 65536 || bytes.find("CmHashTable") != bytes.npos) {
        return 0;
    }
    tessera::FMemoryStream stream(static_cast<const void*>(data), static_cast<std::int32_t>(size));
    tessera::FMessage message;
    if (!message.read(stream)) {
        return 0;
    }
    tessera::FMemoryStream first;
    if (!message.write(first)) {
        return 0;
    }
    first.rewind();
    tessera::FMessage again;
    require(again.read(first));
    tessera::FMemoryStream second;
    require(again.write(second));
    require(first.getSize() == second.getSize());
    return 0;
}
