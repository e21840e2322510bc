// Numbers for display.
#pragma once

#include "foundation/text/FString.h"

#include <cstdint>

namespace tessera {

// With so many decimals. With a negative count two, of which trailing zeros go while the point stays: "1.5", "2.". What
// prints with no digit but 0 has no sign. The decimal point is the locale's.
FString formatNumber(double value, std::int32_t decimals);

} // namespace tessera
