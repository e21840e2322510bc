// IStreamEditTarget: replaces a stretch of an event's audio in place, in hosts that can.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IAudioClip;
struct IAudioStream;
struct IUndoStack;

struct IStreamEditTarget : IBaseUnknown {
    virtual void reserved3() = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual void reserved6() = 0;
    virtual void reserved7() = 0;
    virtual void reserved8() = 0;
    virtual void reserved9() = 0;

    // Slot 10. Main thread. Puts all frames of the stream in the place of the given ones, within the open undo block.
    // Anything but kResultOk: nothing changed.
    virtual FResult replaceFrames(std::int64_t startFrame, std::int64_t frameCount, IAudioStream* stream,
                                  IAudioClip* clip, IUndoStack* undo) = 0;

protected:
    ~IStreamEditTarget() = default;
};

} // namespace tessera
