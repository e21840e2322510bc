// ReparseTag: which of the entries that lead elsewhere are links.
#pragma once

#include <cstdint>

namespace tessera::platform {

// Links and folders mounted elsewhere stand for another name. What else has a tag, a file that lies in the cloud or is
// stored compressed, is a file like any other.
inline bool isLinkTag(std::uint32_t tag) {
    constexpr std::uint32_t kStandsForAnotherName = 0x20000000;
    return (tag & kStandsForAnotherName) != 0;
}

} // namespace tessera::platform
