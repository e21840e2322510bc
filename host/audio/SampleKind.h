// SampleKind: how one sample stands in the frames that travel between streams: signed, in the processor's byte order,
// in exactly as many bytes as the file stores. Every file format that stores a kind carries the same bytes for the same
// sample, unsigned 8-bit included, so frames can be moved between files without a look at them.
#pragma once

#include <cstdint>

namespace tessera::host {

enum class SampleKind : std::uint8_t { int8, int16, int24, int32, float32, float64 };

struct SampleKindFacts {
    const char* name;
    int bytes;
    int bits;
    bool isFloat;
};

inline constexpr SampleKindFacts kSampleKindFacts[] = {
    {"8 bit", 1, 8, false},   {"16 bit", 2, 16, false},      {"24 bit", 3, 24, false},
    {"32 bit", 4, 32, false}, {"32 bit float", 4, 32, true}, {"64 bit float", 8, 64, true},
};

constexpr const SampleKindFacts& factsOf(SampleKind kind) {
    return kSampleKindFacts[static_cast<int>(kind)];
}

} // namespace tessera::host
