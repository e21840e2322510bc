// VolumeKind: what sort of drive holds a path.
#pragma once

#include <cstdint>

namespace tessera {

enum class VolumeKind : std::int32_t {
    unknown = 0,
    none = 1,
    removable = 2,
    // A disk in memory counts as one, too.
    harddisk = 3,
    network = 4,
    compactDisc = 5,
};

} // namespace tessera
