// AudioSplice: makes the audio that comes back into the project: the original up to the edited range, the whole edited
// file, the original behind the range. Main thread; it takes as long as it takes.
//
// The edited file may be shorter or longer than the range; only the place of the tail moves then. Head and tail come
// from a copy of the original, so the original itself is never opened for long.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "shell/hostapi/IAudioClip.h"
#include "shell/hostapi/IHostFile.h"

#include <cstdint>

namespace tessera {

struct IHostServices;

// The clip of a file, or null when the host can't read it.
FRefPtr<IAudioClip> openClip(IHostServices* services, IHostFile* file);

class AudioSplice {
public:
    AudioSplice(IHostServices* services, FRefPtr<IHostFile> whole, FRefPtr<IHostFile> edited);

    // The spliced file, in the folder, under the name of the whole file made unique; the folder's object becomes that
    // of the file. Null when one of the three is missing or can't be read or made. The range is in frames.
    FRefPtr<IHostFile> spliceInto(FRefPtr<IHostFile> folder, std::int64_t rangeStart, std::int64_t rangeFrames);

private:
    bool nameTarget(IHostFile& folder) const;
    bool write(IHostFile& target, std::int64_t rangeStart, std::int64_t rangeFrames);

    IHostServices* services_;
    FRefPtr<IHostFile> whole_;
    FRefPtr<IHostFile> edited_;
};

} // namespace tessera
