// NumberFields: three numbers with a separator between them, as dates and times are written.
#pragma once

#include "foundation/text/FStringRef.h"

#include <array>
#include <cstdint>
#include <optional>

namespace tessera {

// Each number is one to four decimal digits. Nothing if the text holds anything else.
std::optional<std::array<std::uint32_t, 3>> readNumberFields(const FStringRef& text, char separator);

} // namespace tessera
