// SoundFileReader: the frames of one sound file, as SampleKind lays them out, in constant memory however long the file.
//
// Move-free, owned by one thread. open() gives nothing with a reason in *error: the file is missing, can't be read,
// isn't a sound file, stores samples that can't be cut and joined without loss, or doesn't tell how many they are.
#pragma once

#include "host/audio/AudioFormat.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct sf_private_tag;

namespace tessera::host {

class SoundFileReader {
public:
    static std::unique_ptr<SoundFileReader> open(const std::string& path, std::string* error);

    SoundFileReader(const SoundFileReader&) = delete;
    SoundFileReader& operator=(const SoundFileReader&) = delete;
    ~SoundFileReader();

    const AudioFormat& format() const { return format_; }
    std::int64_t frames() const { return frames_; }

    // The frames read, fewer only at the end of the file or where it is damaged.
    std::int64_t read(std::int64_t count, void* buffer);
    // From 0 to the end of the file, which is allowed. False elsewhere.
    bool seek(std::int64_t frame);

private:
    SoundFileReader(sf_private_tag* file, const AudioFormat& format, std::int64_t frames);
    std::int64_t readNarrow(std::int64_t count, std::uint8_t* out);

    sf_private_tag* const file_;
    const AudioFormat format_;
    const std::int64_t frames_;
    std::vector<std::int32_t> wide_; // samples on their way to 8 or 24 bits
};

} // namespace tessera::host
