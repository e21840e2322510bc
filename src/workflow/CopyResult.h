// CopyResult: what became of copying a stretch of audio into a file.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "shell/hostapi/IAudioStream.h"
#include "shell/hostapi/IHostFile.h"

#include <cstdint>

namespace tessera {

struct CopyResult {
    // Null on failure, also when a part of it was written.
    FRefPtr<IHostFile> file;
    // The file is complete once nobody holds its writer.
    FRefPtr<IAudioStream> writer;
    // The stretch, in frames of the original.
    std::int64_t startFrame = 0;
    std::int64_t frames = 0;
};

} // namespace tessera
