// Identifiers: fresh random identifiers of the platform.
#pragma once

#include <cstdint>

namespace tessera::platform {

// Sixteen bytes in the byte order of a Windows GUID, of the random kind: version 4 in the highest four bits of byte 7,
// the variant in the highest two of byte 8. False, and the bytes unchanged, when the system has no random numbers.
bool generateIdentifier(std::uint8_t (&bytes)[16]);

} // namespace tessera::platform
