// A stream with objects in it may be broken anywhere: counts, sizes, class names, nesting. What could be read is
// written and read again, to the same bytes.
#include "foundation/containers/CmContainer.h"
#include "foundation/object/FRefPtr.h"
#include "fuzz/LeaksAllowed.h"
#include "persistence/objects/ObjectStreaming.h"
#include "persistence/streams/FMemoryStream.h"

#include <cstdint>
#include <cstdlib>
#include <string>

using namespace tessera;

namespace {

FRefPtr<CmObject> readFrom(const std::string& bytes) {
    std::string copy = bytes;
    FMemoryStream stream(copy.data(), static_cast<std::int32_t>(copy.size()));
    CmObject* object = nullptr;
    return readObject(stream, "CmObject", object) ? FRefPtr<CmObject>::adopt(object) : FRefPtr<CmObject>();
}

std::string bytesOf(const CmObject& object) {
    FMemoryStream stream;
    if (!writeObject(stream, &object)) {
        std::abort();
    }
    return std::string(reinterpret_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const FRefPtr<CmObject> object = readFrom(std::string(reinterpret_cast<const char*>(data), size));
    if (!object || cmCast<CmContainer>(object.get()) == nullptr) {
        return 0;
    }
    const std::string bytes = bytesOf(*object);
    const FRefPtr<CmObject> again = readFrom(bytes);
    // Objects that are ordered or hashed by their address stand in another order the second time; the length holds.
    if (!again || bytesOf(*again).size() != bytes.size()) {
        std::abort();
    }
    return 0;
}
