// Messages come back from streams with objects of any registered class in them. What was read and written is read
// again, and has as many attributes when it has gone round once more. Its bytes may change on the first way: some
// containers keep their elements by address, and 8-bit text that looks like marked UTF-8 is taken for it.
//
// Hash tables are left out: a few bytes may ask for a million buckets, and so for all the memory there is. Longer
// inputs are left out, too: text grows when it travels as UTF-8, and more than 50,000 bytes of it aren't read back.
#include "foundation/messages/FMessage.h"
#include "fuzz/LeaksAllowed.h"
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
    if (size > 16384 || bytes.find("CmHashTable") != bytes.npos) {
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
    second.rewind();
    tessera::FMessage last;
    require(last.read(second));
    require(last.getAttributeCount() == again.getAttributeCount());
    return 0;
}
