// CmOwnership: who owns what a container holds. A container may be told at any time; what it holds already stays as it
// came in. 16 bits, as it stands in a container's stream form; a stream may hold a value that isn't named here, and
// such a container neither adds nor releases.
#pragma once

#include <cstdint>

namespace tessera {

enum class CmOwnership : std::int16_t {
    // The container only points at its elements.
    none = 0,
    // An element's creation reference goes over to the container when it's added, and is released when it leaves;
    // copyFrom clones.
    owner = 1,
    // The container adds a reference when an element comes and releases it when it leaves.
    shared = 2,
};

} // namespace tessera
