// SoundFacts: what must not change about a sound file when an editor has had it.
//
// The host splices the edited frames into the original by their bytes. A file that comes back at another rate, with
// other channels or in another sample format would play at the wrong speed or as noise, so it is converted back or
// refused.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tessera::peer {

struct SoundFacts {
    std::int64_t frames = 0;
    int rate = 0; // frames per second
    int channels = 0;
    int format = 0; // libsndfile's word: container, sample format and byte order

    // Container and sample format, without the byte order: that one follows from the container.
    bool sameFormat(const SoundFacts& other) const;
    // "48000 Hz, 2 channels, WAV (Microsoft), Signed 24 bit PCM"
    std::string text() const;
};

// The facts of a file, or nothing with the reason in *problem. path is UTF-8.
std::optional<SoundFacts> readSoundFacts(const std::string& path, std::string* problem);

// Writes the frames of source to a new file target in the container and sample format of wanted. Rate and channels
// have to agree already. False with the reason in *problem; target is then gone again. Runs as long as the file is
// long, in constant memory.
bool convertSound(const std::string& source, const std::string& target, const SoundFacts& wanted, std::string* problem);

} // namespace tessera::peer
