// AudioFormat: what a new audio file is to be: where, how many channels, frames per second, bits of a sample.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "shell/hostapi/IHostFile.h"

#include <cstdint>

namespace tessera {

struct IAudioClip;
struct IAudioStream;
struct IHostServices;

struct AudioFormat {
    // As the stream, respectively the clip, has it; the file is the target.
    static AudioFormat of(IAudioStream& stream, IHostFile* target);
    static AudioFormat of(IAudioClip& clip, IHostFile* target);

    // A stream that writes such a file, opened, with one reference for the caller; null when the host can't.
    FRefPtr<IAudioStream> createWriter(IHostServices* services) const;

    FRefPtr<IHostFile> file;
    std::int32_t channels = 0;
    float sampleRate = 0;
    std::int32_t bitsPerSample = 0;
};

} // namespace tessera
