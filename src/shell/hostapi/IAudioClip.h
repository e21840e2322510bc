// IAudioClip: an audio file as the host's pool knows it. What its operations give stays the host's.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IAudioStream;
struct IHostFile;

struct IAudioClip : IBaseUnknown {
    static constexpr FUIDBytes iid = "{0251DA1B-82F7-43B1-9017-504B587B0623}"_uid;

    // Slot 3. Main thread. Where the file is.
    virtual IHostFile* file() = 0;

    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual void reserved6() = 0;

    // Slot 7. Main thread.
    virtual std::int32_t channels() = 0;

    // Slot 8. Main thread. Frames per second.
    virtual float sampleRate() = 0;

    // Slot 9. Main thread. All frames of the file.
    virtual std::int64_t frames() = 0;

    virtual void reserved10() = 0;

    // Slot 11. Main thread.
    virtual std::int32_t bitsPerSample() = 0;

    virtual void reserved12() = 0;

    // Slot 13. Main thread. A stream on the file that nobody else uses, not yet opened, or null. It stays the clip's:
    // who keeps it adds a reference, and must do so before asking again.
    virtual IAudioStream* stream() = 0;

protected:
    ~IAudioClip() = default;
};

} // namespace tessera
