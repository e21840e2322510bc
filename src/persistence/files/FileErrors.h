// FileErrors: the system's error numbers as sentences for the user, in the user's language.
#pragma once

#include "foundation/text/FString.h"

#include <cstdint>

namespace tessera {

// The system's own description; for 0 "No error occurred.".
FString systemErrorText(std::int32_t error);

// For the usual troubles with files a sentence of ours; for all others one that ends with the system's description.
FString fileErrorText(std::int32_t error);

} // namespace tessera
