// SeekMode: what the offset of a seek counts from. The numbers are those that hosts pass.
#pragma once

#include <cstdint>

namespace tessera {

enum class SeekMode : std::int32_t {
    fromStart = 0,
    fromHere = 1,
    fromEnd = 2,
};

} // namespace tessera
