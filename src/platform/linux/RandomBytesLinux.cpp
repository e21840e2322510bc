#include "platform/RandomBytes.h"

#include <cerrno>
#include <cstdint>
#include <sys/random.h>

namespace tessera::platform {

bool fillRandomBytes(void* bytes, std::size_t count) {
    auto* target = static_cast<std::uint8_t*>(bytes);
    while (count > 0) {
        const ssize_t got = getrandom(target, count, 0);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return false;
        }
        target += got;
        count -= static_cast<std::size_t>(got);
    }
    return true;
}

} // namespace tessera::platform
