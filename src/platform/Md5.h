// Md5: the digest that names files after texts of any kind. It tells texts apart; it keeps nobody out.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tessera::platform {

using Md5Digest = std::array<std::uint8_t, 16>;

// From any thread.
Md5Digest md5(std::string_view bytes);

} // namespace tessera::platform
