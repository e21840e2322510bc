#include "platform/RandomBytes.h"

#include <algorithm>
#include <cstdint>
#include <windows.h>
// Needs the types of the header before.
#include <ntsecapi.h>

namespace tessera::platform {

bool fillRandomBytes(void* bytes, std::size_t count) {
    auto* target = static_cast<std::uint8_t*>(bytes);
    while (count > 0) {
        const auto part = static_cast<ULONG>(std::min<std::size_t>(count, 0x40000000));
        if (RtlGenRandom(target, part) == FALSE) {
            return false;
        }
        target += part;
        count -= part;
    }
    return true;
}

} // namespace tessera::platform
