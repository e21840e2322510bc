#include "host/audio/FrameShape.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace tessera::host {
namespace {

// Integers travel left-aligned in 32 bits, so that widening is exact; floats as doubles in the range of -1 to 1.
std::int32_t loadInteger(const std::uint8_t* from, int bytes) {
    std::uint32_t sample = 0;
    for (int byte = 0; byte < bytes; ++byte) {
        sample |= static_cast<std::uint32_t>(from[byte]) << (8 * (4 - bytes + byte));
    }
    return static_cast<std::int32_t>(sample);
}

void storeInteger(std::int32_t value, std::uint8_t* to, int bytes) {
    const int dropped = 32 - 8 * bytes;
    std::int64_t rounded = value;
    if (dropped > 0) {
        const std::int64_t half = std::int64_t{1} << (dropped - 1);
        const std::int64_t largest = 0x7FFFFFFFLL >> dropped << dropped;
        rounded = std::min(rounded + half, largest);
    }
    const auto sample = static_cast<std::uint32_t>(rounded);
    for (int byte = 0; byte < bytes; ++byte) {
        to[byte] = static_cast<std::uint8_t>(sample >> (8 * (4 - bytes + byte)));
    }
}

constexpr double kFullScale = 2147483648.0;

double loadFloat(const std::uint8_t* from, SampleKind kind) {
    if (kind == SampleKind::float64) {
        double value = 0;
        std::memcpy(&value, from, sizeof value);
        return value;
    }
    float value = 0;
    std::memcpy(&value, from, sizeof value);
    return value;
}

void storeFloat(double value, std::uint8_t* to, SampleKind kind) {
    if (kind == SampleKind::float64) {
        std::memcpy(to, &value, sizeof value);
        return;
    }
    const auto narrow = static_cast<float>(value);
    std::memcpy(to, &narrow, sizeof narrow);
}

std::int32_t toInteger(double value) {
    // A sample that is no number is silence, not a click.
    const double scaled = std::isnan(value) ? 0 : std::nearbyint(value * kFullScale);
    return static_cast<std::int32_t>(std::clamp(scaled, -kFullScale, kFullScale - 1));
}

void convertSample(const std::uint8_t* from, SampleKind fromKind, std::uint8_t* to, SampleKind toKind) {
    const SampleKindFacts& source = factsOf(fromKind);
    const SampleKindFacts& target = factsOf(toKind);
    if (fromKind == toKind) {
        std::memcpy(to, from, static_cast<std::size_t>(source.bytes));
    } else if (source.isFloat && target.isFloat) {
        storeFloat(loadFloat(from, fromKind), to, toKind);
    } else if (source.isFloat) {
        storeInteger(toInteger(loadFloat(from, fromKind)), to, target.bytes);
    } else if (target.isFloat) {
        storeFloat(loadInteger(from, source.bytes) / kFullScale, to, toKind);
    } else {
        storeInteger(loadInteger(from, source.bytes), to, target.bytes);
    }
}

} // namespace

void convertFrames(const void* from, FrameShape fromShape, void* to, FrameShape toShape, std::int64_t frames) {
    const auto* source = static_cast<const std::uint8_t*>(from);
    auto* target = static_cast<std::uint8_t*>(to);
    const int fromBytes = factsOf(fromShape.kind).bytes;
    const int toBytes = factsOf(toShape.kind).bytes;
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        for (int channel = 0; channel < toShape.channels; ++channel) {
            const int sourceChannel = fromShape.channels == 1 ? 0 : channel;
            std::uint8_t* const sample = target + channel * toBytes;
            if (sourceChannel < fromShape.channels) {
                convertSample(source + sourceChannel * fromBytes, fromShape.kind, sample, toShape.kind);
            } else {
                std::memset(sample, 0, static_cast<std::size_t>(toBytes));
            }
        }
        source += fromShape.bytesPerFrame();
        target += toShape.bytesPerFrame();
    }
}

} // namespace tessera::host
