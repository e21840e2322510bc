// IAudioPart: what an audio event plays: one clip. It offers IFolderNode, its entry in the pool.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IAudioClip;

struct IAudioPart : IBaseUnknown {
    // Slot 3. Main thread. The clip, which stays the part's; null before a bind.
    virtual IAudioClip* clip() = 0;

    // Slot 4. Main thread, once. True: the part holds the clip, with a reference of its own.
    virtual bool bind(IAudioClip* clip) = 0;

protected:
    ~IAudioPart() = default;
};

} // namespace tessera
