// AudioFormat: what a sound file is made of. The container word is libsndfile's: kind of file, encoding of the samples
// and byte order, as one number.
#pragma once

#include "host/audio/SampleKind.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tessera::host {

struct AudioFormat {
    int container = 0;
    SampleKind kind = SampleKind::int16;
    int channels = 0;
    int sampleRate = 0;

    int bytesPerFrame() const { return factsOf(kind).bytes * channels; }
    friend bool operator==(const AudioFormat&, const AudioFormat&) = default;
};

// The kind of the samples of an encoding; nothing for encodings that can't be cut and joined without loss.
std::optional<SampleKind> sampleKindOf(int container);

// "WAV, 24 bit, 2 channels, 48000 Hz".
std::string describe(const AudioFormat& format);

// Whether the name says which kind of file it is.
bool hasKnownExtension(const std::string& path);

// How many bytes of samples a file of that container can hold.
std::int64_t largestDataBytes(int container);

// What a file of that name has to be written as, so that it holds samples of that kind and, where the names agree, the
// very format of the source. A name that says nothing gets the source's kind of file, or WAV without a source.
// dataBytes is what may come, at most: files beyond 4 GB need the 64-bit forms of WAV. Nothing for a kind of sample
// that the kind of file can't hold.
std::optional<AudioFormat> formatForFile(const std::string& path, const AudioFormat& wanted, std::int64_t dataBytes);

} // namespace tessera::host
