// Sound files of any format, as the values of their samples: integers left-aligned in 32 bits, floats as their bits.
// Made and read with libsndfile alone, so that what the host and the module did is seen by other means than theirs.
#pragma once

#include "common/OpenSound.h"

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <sndfile.h>
#include <string>
#include <vector>

namespace tessera::acceptance {

using Samples = std::vector<std::int32_t>;

struct SoundFormat {
    const char* extension;
    int container;
    int bits; // that a sample really has
};

inline bool isFloat(int container) {
    return (container & SF_FORMAT_SUBMASK) == SF_FORMAT_FLOAT;
}

inline Samples randomSamples(const SoundFormat& format, std::int64_t frames, int channels, unsigned seed) {
    std::mt19937 random(seed);
    Samples samples(static_cast<std::size_t>(frames * channels));
    for (std::int32_t& sample : samples) {
        if (isFloat(format.container)) {
            const float value = std::uniform_real_distribution<float>(-1.5F, 1.5F)(random);
            std::memcpy(&sample, &value, sizeof value);
        } else {
            sample = static_cast<std::int32_t>(random() << (32 - format.bits));
        }
    }
    return samples;
}

inline void writeSound(const std::string& path, const SoundFormat& format, const Samples& samples, int channels,
                       int sampleRate) {
    SF_INFO info = {};
    info.format = format.container;
    info.channels = channels;
    info.samplerate = sampleRate;
    SNDFILE* const file = programs::openSound(path, SFM_WRITE, &info);
    ASSERT_NE(file, nullptr) << path << ": " << sf_strerror(nullptr);
    const auto frames = static_cast<sf_count_t>(samples.size()) / channels;
    std::vector<float> floats(samples.size());
    std::memcpy(floats.data(), samples.data(), samples.size() * sizeof(float));
    const sf_count_t written = isFloat(format.container) ? sf_writef_float(file, floats.data(), frames)
                                                         : sf_writef_int(file, samples.data(), frames);
    EXPECT_EQ(written, frames);
    sf_close(file);
}

struct Sound {
    Samples samples;
    int container = 0;
    int channels = 0;
    int sampleRate = 0;
};

inline Sound readSound(const std::string& path) {
    SF_INFO info = {};
    SNDFILE* const file = programs::openSound(path, SFM_READ, &info);
    if (file == nullptr) {
        ADD_FAILURE() << path << ": " << sf_strerror(nullptr);
        return {};
    }
    Samples samples(static_cast<std::size_t>(info.frames * info.channels));
    std::vector<float> floats(samples.size());
    const sf_count_t read = isFloat(info.format) ? sf_readf_float(file, floats.data(), info.frames)
                                                 : sf_readf_int(file, samples.data(), info.frames);
    EXPECT_EQ(read, info.frames);
    if (isFloat(info.format)) {
        std::memcpy(samples.data(), floats.data(), samples.size() * sizeof(float));
    }
    sf_close(file);
    return {samples, info.format, info.channels, info.samplerate};
}

} // namespace tessera::acceptance
