// PathKind: what a path object says that it names.
#pragma once

#include <cstdint>

namespace tessera {

enum class PathKind : std::int16_t {
    // Found out from the system when somebody asks.
    unknown = -1,
    file = 0,
    folder = 1,
    // A ".lnk" file that an iterator met.
    link = 2,
    // A file that is walked like a folder.
    container = 3,
};

} // namespace tessera
