#include "host/audio/FrameShape.h"

#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace tessera::host {
namespace {

template <class To, class From>
std::vector<To> convert(const std::vector<From>& from, FrameShape fromShape, FrameShape toShape) {
    const auto frames = static_cast<std::int64_t>(from.size() * sizeof(From)) / fromShape.bytesPerFrame();
    std::vector<To> to(static_cast<std::size_t>(frames * toShape.bytesPerFrame()) / sizeof(To));
    convertFrames(from.data(), fromShape, to.data(), toShape, frames);
    return to;
}

constexpr FrameShape mono(SampleKind kind) {
    return {kind, 1};
}

using Bytes = std::vector<std::uint8_t>;
using Shorts = std::vector<std::int16_t>;
using Ints = std::vector<std::int32_t>;
using Floats = std::vector<float>;

TEST(FrameShape, WideningKeepsTheValue) {
    EXPECT_EQ((convert<std::int32_t>(Shorts{-32768, -1, 0, 32767}, mono(SampleKind::int16), mono(SampleKind::int32))),
              (Ints{-2147483647 - 1, -65536, 0, 2147418112}));
    EXPECT_EQ((convert<std::uint8_t>(Shorts{-2, 258}, mono(SampleKind::int16), mono(SampleKind::int24))),
              (Bytes{0x00, 0xFE, 0xFF, 0x00, 0x02, 0x01}));
}

TEST(FrameShape, NarrowingRoundsAndStaysInRange) {
    EXPECT_EQ((convert<std::int16_t>(Ints{0x00017FFF, 0x00018000, 0x7FFFFFFF, -2147483647 - 1}, mono(SampleKind::int32),
                                     mono(SampleKind::int16))),
              (Shorts{1, 2, 32767, -32768}));
}

TEST(FrameShape, FullScaleIsOne) {
    EXPECT_EQ((convert<float>(Shorts{-32768, 16384}, mono(SampleKind::int16), mono(SampleKind::float32))),
              (Floats{-1, 0.5F}));
    EXPECT_EQ((convert<std::int16_t>(Floats{-1, 0.5F, 1, 7, -7}, mono(SampleKind::float32), mono(SampleKind::int16))),
              (Shorts{-32768, 16384, 32767, 32767, -32768}));
}

TEST(FrameShape, WhatIsNoNumberBecomesSilence) {
    EXPECT_EQ((convert<std::int16_t>(Floats{std::numeric_limits<float>::quiet_NaN()}, mono(SampleKind::float32),
                                     mono(SampleKind::int16))),
              (Shorts{0}));
}

TEST(FrameShape, EveryIntegerOf24BitsComesBackFromFloat) {
    Bytes all;
    for (std::int32_t value : {-8388608, -8388607, -1, 0, 1, 4194304, 8388606, 8388607}) {
        for (int byte = 0; byte < 3; ++byte) {
            all.push_back(static_cast<std::uint8_t>(static_cast<std::uint32_t>(value) >> (8 * byte)));
        }
    }
    const Floats floats = convert<float>(all, mono(SampleKind::int24), mono(SampleKind::float32));
    EXPECT_EQ((convert<std::uint8_t>(floats, mono(SampleKind::float32), mono(SampleKind::int24))), all);
}

TEST(FrameShape, ChannelsAreSpreadLeftOutOrSilent) {
    const FrameShape two{SampleKind::int16, 2};
    const FrameShape three{SampleKind::int16, 3};
    EXPECT_EQ((convert<std::int16_t>(Shorts{1, 2}, mono(SampleKind::int16), two)), (Shorts{1, 1, 2, 2}));
    EXPECT_EQ((convert<std::int16_t>(Shorts{1, 2, 3, 4}, two, mono(SampleKind::int16))), (Shorts{1, 3}));
    EXPECT_EQ((convert<std::int16_t>(Shorts{1, 2, 3, 4}, two, three)), (Shorts{1, 2, 0, 3, 4, 0}));
}

} // namespace
} // namespace tessera::host
