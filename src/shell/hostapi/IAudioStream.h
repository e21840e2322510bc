// IAudioStream: frames of one audio file, to read or to write. A frame is one sample of each channel, interleaved;
// how its bytes are laid out is the host's business, and the same for every stream of one width and kind, so that
// frames can be carried from one stream to another without a look at them. Positions and counts are frames.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IAudioStream : IBaseUnknown {
    // Slot 3. Main thread. Opens the file, where the first transfer or seek would do so otherwise. False: the file
    // can't be read or made.
    virtual bool open() = 0;

    virtual void reserved4() = 0;

    // Slot 5. Main thread, after open and before the first transfer. The two streams will exchange frames: a writer
    // that is attached takes up the exact sample kind of its source, and a reader that is attached delivers frames as
    // the writer wants them. No reference is kept beyond the life of either.
    virtual void attach(IAudioStream* other) = 0;

    virtual void reserved6() = 0;

    // Slot 7. Main thread. All frames of the file; for a writer those written so far.
    virtual std::int64_t frames() = 0;

    // Slot 8. Main thread. Frames per second.
    virtual float sampleRate() = 0;

    virtual void reserved9() = 0;
    virtual void reserved10() = 0;
    virtual void reserved11() = 0;

    // Slot 12. Main thread. Bytes of one frame in the buffers of read and write.
    virtual std::int32_t bytesPerFrame() = 0;

    virtual void reserved13() = 0;

    // Slot 14. Main thread.
    virtual std::int32_t bitsPerSample() = 0;

    virtual void reserved15() = 0;
    virtual void reserved16() = 0;
    virtual void reserved17() = 0;

    // Slot 18. Main thread.
    virtual std::int32_t channels() = 0;

    virtual void reserved19() = 0;
    virtual void reserved20() = 0;
    virtual void reserved21() = 0;
    virtual void reserved22() = 0;
    virtual void reserved23() = 0;

    // Slot 24. Main thread. Reads on from the position into count times bytesPerFrame bytes. The frames
    // read: fewer at the end of the file, 0 behind it or on an error.
    virtual std::int32_t read(std::int32_t count, void* buffer) = 0;

    // Slot 25. Main thread. Appends frames. isLast: everything so far goes to the disk, readable by
    // others; it may come more than once. The frames written: fewer than count on an error.
    virtual std::int32_t write(std::int32_t count, const void* buffer, bool isLast) = 0;

    // Slot 26. Main thread. The next read starts there; the end of the file is allowed. A writer knows
    // only the start, before the first frame. False for any other place, and the position stays.
    virtual bool seek(std::int64_t frame) = 0;

protected:
    ~IAudioStream() = default;
};

} // namespace tessera
