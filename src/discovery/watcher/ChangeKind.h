// ChangeKind: what has happened to an entry of a watched folder.
#pragma once

#include <cstdint>

namespace tessera {

enum class ChangeKind : std::uint8_t {
    added = 0,
    removed = 1,
    modified = 2,
    renamed = 3,
    // Look at the folder anew: what has happened below it isn't known.
    other = 4,
};

} // namespace tessera
