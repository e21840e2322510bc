// AudioStore: where the doubles of a host keep audio: files by name, each of one format. Frames are bytes.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "shell/hostapi/IAudioStream.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace tessera::test {

struct SoundFormat {
    std::int32_t channels = 2;
    float sampleRate = 1000;
    std::int32_t bitsPerSample = 24;

    constexpr std::int32_t bytesPerFrame() const { return channels * bitsPerSample / 8; }
    friend bool operator==(const SoundFormat&, const SoundFormat&) = default;
};

class AudioStore {
public:
    virtual ~AudioStore() = default;
    virtual bool exists(const std::u16string& path) = 0;
    // Of a file that exists.
    virtual SoundFormat formatOf(const std::u16string& path) = 0;
    virtual std::int64_t framesOf(const std::u16string& path) = 0;
    virtual FRefPtr<IAudioStream> reader(const std::u16string& path) = 0;
    virtual FRefPtr<IAudioStream> writer(const std::u16string& path, const SoundFormat& format) = 0;
};

} // namespace tessera::test
