// SampleKind: how one sample stands in the frames that travel between streams: signed, in the processor's byte order,
// in exactly as many bytes as the file stores. Every file format that stores a kind carries the same bytes for the same
// sample, unsigned 8-bit included, so frames can be moved between files without a look at them.
#pragma once

#include <cstdint>

namespace tessera::host {

enum class SampleKind : std::uint8_t { int8, int16, int24, int32, float32, float64 };

struct SampleKindFacts {
    int bytes;
    int bits;
    bool isFloat;
};

inline constexpr SampleKindFacts kSampleKindFacts[] = {
    {1, 8, false}, {2, 16, false}, {3, 24, false}, {4, 32, false}, {4, 32, true}, {8, 64, true},
};

constexpr const SampleKindFacts& factsOf(SampleKind kind) {
    return kSampleKindFacts[static_cast<int>(kind)];
}

} // namespace tessera::host
