// FXmlError: how a parse failed. The numbers are those that readers pass on.
#pragma once

#include <cstdint>

namespace tessera {

enum class FXmlError : std::int32_t {
    none = 0,
    malformed = 1,
    // Also what a callback's refusal becomes when it names no error of its own.
    unexpectedTag = 2,
    endOfFile = 3,
    // These two are for readers; the parser itself sets neither.
    missingAttributes = 4,
    tagOutOfPlace = 5,
};

// The text for a user; empty for none and for every number without a name.
const char* xmlErrorText(FXmlError error);

} // namespace tessera
