// FKeptNames: names of values that stay in memory to the end of the process, so that the records of all documents that
// are read, and of all settings, can point at one copy.
//
// They say the same few names over and over. The table is bounded, so that a document of odd names can't fill the
// memory: what finds no room, or is long, isn't kept, and the caller makes a copy of its own. From any thread, without
// a lock.
#pragma once

#include "foundation/text/FStringRef.h"

#include <cstddef>
#include <string_view>

namespace tessera {

class FKeptNames {
public:
    static constexpr std::size_t kTableSize = 4096;
    static constexpr std::size_t kLongest = 47;

    // The kept copy, which ends with a NUL; a null view when there is none.
    static FStringRef find(std::string_view name);
};

} // namespace tessera
