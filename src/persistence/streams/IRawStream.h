// IRawStream: the table of raw byte operations that every stream serves; all typed operations stand on these four.
//
// Sizes are signed 32-bit, positions signed 64-bit. Nothing throws. A stream that met an error goes on answering, so
// the caller tests each result. One thread at a time.
#pragma once

#include "persistence/streams/SeekMode.h"

#include <cstdint>

namespace tessera {

struct IRawStream {
    // The count of bytes read; fewer than size at the end. 0 or negative: nothing came (-1 when a watcher refused).
    virtual std::int32_t read(void* buffer, std::int32_t size) = 0;
    // The count of bytes taken; 0 or negative: nothing was.
    virtual std::int32_t write(const void* buffer, std::int32_t size) = 0;
    // The new position, negative when the stream can't seek there.
    virtual std::int64_t seek(std::int64_t offset, SeekMode mode) = 0;
    virtual std::int64_t tell() = 0;

protected:
    ~IRawStream() = default;
};

} // namespace tessera
