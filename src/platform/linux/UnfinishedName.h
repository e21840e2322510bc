// UnfinishedName: names for files that get their own when they are complete.
#pragma once

#include <atomic>
#include <string>
#include <unistd.h>

namespace tessera::platform {

// A hidden name that no other process, and no other call of this one, uses at the same time.
inline std::string unfinishedName() {
    static std::atomic<unsigned> counter{0};
    return ".tesx-" + std::to_string(::getpid()) + "-" + std::to_string(counter.fetch_add(1)) + ".part";
}

} // namespace tessera::platform
