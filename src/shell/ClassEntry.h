// ClassEntry: one class of the module as its factory stores it: both records and how to make an object.
#pragma once

#include "foundation/object/IBaseUnknown.h"
#include "shell/hostapi/ClassInfoEx.h"
#include "shell/hostapi/ClassInfoWide.h"

#include <cstdint>
#include <type_traits>

namespace tessera {

// A new object with one reference for the caller, or null.
using CreateFunction = IBaseUnknown* (*)(std::uintptr_t context);

struct ClassEntry {
    ClassInfoEx info;
    ClassInfoWide wideInfo;
    CreateFunction create = nullptr;
    std::uintptr_t context = 0;
    // The class was registered with 16-bit texts, so `info` holds nothing.
    std::uint8_t wideOnly = 0;
};

// The factory's array is grown by reallocation.
static_assert(std::is_trivially_copyable_v<ClassEntry>);

} // namespace tessera
