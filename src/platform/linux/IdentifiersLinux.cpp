#include "platform/Identifiers.h"

#include "platform/RandomBytes.h"

#include <cstring>

namespace tessera::platform {

bool generateIdentifier(std::uint8_t (&bytes)[16]) {
    std::uint8_t fresh[16];
    if (!fillRandomBytes(fresh, sizeof fresh)) {
        return false;
    }
    // The third word of a GUID stands with its low byte first, so its version is in byte 7.
    fresh[7] = static_cast<std::uint8_t>((fresh[7] & 0x0f) | 0x40);
    fresh[8] = static_cast<std::uint8_t>((fresh[8] & 0x3f) | 0x80);
    std::memcpy(bytes, fresh, sizeof fresh);
    return true;
}

} // namespace tessera::platform
