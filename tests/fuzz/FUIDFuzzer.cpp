// Identifiers come as text from files and from other modules. Whatever is accepted is written as a text of the right
// form that reads back to the same identifier, and what is refused changes nothing.
#include "foundation/object/CmUID.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tessera::CmUID;
    using tessera::FUID;
    const std::string text(reinterpret_cast<const char*>(data), size);

    FUID plain;
    char buffer[FUID::kRegistryTextSize];
    const bool plainRead = plain.fromString(text.c_str());
    require(plainRead == (std::strlen(text.c_str()) == 32) && (plainRead || !plain.isValid()));
    plain.toString(buffer);
    FUID again;
    require(std::strlen(buffer) == 32 && again.fromString(buffer) && again == plain);

    FUID registry;
    const bool registryRead = registry.fromRegistryString(text.c_str());
    require(registryRead == (std::strlen(text.c_str()) == 38) && (registryRead || !registry.isValid()));
    registry.toRegistryString(buffer);
    require(std::strlen(buffer) == 38 && again.fromRegistryString(buffer) && again == registry);

    CmUID object;
    object.fromMemoryDigits(text.c_str());
    object.toMemoryDigits(buffer);
    CmUID objectAgain;
    objectAgain.fromMemoryDigits(buffer);
    require(objectAgain.bytes() == object.bytes());
    object.fromBase32(text.c_str());
    object.toBase32(buffer);
    objectAgain.fromBase32(buffer);
    require(objectAgain.bytes() == object.bytes());
    return 0;
}
