// The number that a name carries behind a hyphen, as in "Take-07": at least two digits. What the namers read and write.
#pragma once

#include "foundation/text/FString.h"

#include <cstdint>

namespace tessera {

// Where the hyphen stands; -1 without such a number.
std::int32_t findNumberSuffix(const FStringRef& name);

FString withNumberSuffix(const FStringRef& stem, std::uint32_t number);

} // namespace tessera
