// How long an operation may wait: milliseconds, 0 to ask without waiting, and one value for "as long as it takes".
#pragma once

#include <cstdint>

namespace tessera::platform {

inline constexpr std::uint32_t kNoTimeLimit = 0xffffffffu;

} // namespace tessera::platform
