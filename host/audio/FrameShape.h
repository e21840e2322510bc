// convertFrames: frames of one sample kind and channel count as those of another. Between integers of growing width,
// and from up to 24 bits to float, nothing is lost; the other way values are rounded and kept in range. A channel that
// the source lacks gets the source's only channel if it has just one, silence otherwise; channels beyond the target's
// are left out.
#pragma once

#include "host/audio/SampleKind.h"

#include <cstdint>

namespace tessera::host {

struct FrameShape {
    SampleKind kind = SampleKind::int16;
    int channels = 0;

    int bytesPerFrame() const { return factsOf(kind).bytes * channels; }
    friend bool operator==(const FrameShape&, const FrameShape&) = default;
};

void convertFrames(const void* from, FrameShape fromShape, void* to, FrameShape toShape, std::int64_t frames);

} // namespace tessera::host
