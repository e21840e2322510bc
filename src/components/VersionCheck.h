// VersionCheck: whether a class is recent enough. The numbers are what callers outside know.
#pragma once

#include <cstdint>

namespace tessera {

enum class VersionCheck : std::int32_t {
    // Also when no minimum was given.
    tooOld = 0,
    recentEnough = 1,
    unknownClass = 2,
};

} // namespace tessera
