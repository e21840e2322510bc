// IAudioWriterFactory: describes a new audio file and makes the stream that writes it. A new object at each
// queryService. The kind of file follows the extension of its name. Called in the order setSampleRate, setFile,
// setBitsPerSample, setChannels, setSampleKind where it applies, create.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IAudioStream;
struct IHostFile;

struct IAudioWriterFactory : IBaseUnknown {
    static constexpr FUIDBytes iid = "{A03CBE81-E5DB-473E-A908-23686A34D4BF}"_uid;

    virtual void reserved3() = 0;
    virtual void reserved4() = 0;

    // Slot 5. Main thread, before create. The path is copied.
    virtual void setFile(IHostFile* file) = 0;

    // Slot 6. Main thread, before create. 2 for 32 bits, 0 for 8 bits, not called for other widths.
    virtual void setSampleKind(std::int32_t kind) = 0;

    // Slot 7. Main thread, before create.
    virtual void setChannels(std::int32_t channels) = 0;

    // Slot 8. Main thread, before create.
    virtual void setSampleRate(float framesPerSecond) = 0;

    // Slot 9. Main thread, before create.
    virtual void setBitsPerSample(std::int32_t bits) = 0;

    // Slot 10. Main thread. A stream to write, not yet opened, with one reference that belongs to the caller; null
    // when no such file can be made. The file is complete when its last reference has gone.
    virtual IAudioStream* create() = 0;

protected:
    ~IAudioWriterFactory() = default;
};

} // namespace tessera
