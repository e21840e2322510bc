#include "platform/Identifiers.h"

#include <objbase.h>
#include <windows.h>

#include <cstring>

namespace tessera::platform {

bool generateIdentifier(std::uint8_t (&bytes)[16]) {
    GUID fresh = {};
    if (CoCreateGuid(&fresh) != S_OK) {
        return false;
    }
    static_assert(sizeof fresh == sizeof bytes);
    std::memcpy(bytes, &fresh, sizeof fresh);
    return true;
}

} // namespace tessera::platform
