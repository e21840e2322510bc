// How a change shows in a failed test. Every test of changes includes it: where one part of a program prints a type
// otherwise than another, the linker picks either.
#pragma once

#include "discovery/watcher/ChangeBatch.h"

#include <cstddef>
#include <ostream>

namespace tessera {

inline std::ostream& operator<<(std::ostream& out, const ChangeEvent& event) {
    const char* const kinds[] = {"added", "removed", "modified", "renamed", "other"};
    return out << kinds[static_cast<std::size_t>(event.kind)] << " " << event.path << " " << event.newPath;
}

} // namespace tessera
