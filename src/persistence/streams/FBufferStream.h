// FBufferStream: a stream over a CmBuffer that belongs to somebody else and has to outlive it.
//
// The position is the buffer's fill and the end of the data its size: writing appends. To read what was written, cut
// the size to what is filled first (buffer.setSize(buffer.getFill())), then rewind; otherwise the rounding of the
// buffer's growth reads as data. Seeking from the end counts backwards: an offset of 3 stands three bytes before the
// end.
#pragma once

#include "foundation/object/CmClass.h"
#include "persistence/streams/FStream.h"

#include <cstdint>

namespace tessera {

class CmBuffer;

class FBufferStream : public CmClass<FBufferStream, FStream> {
public:
    static FMetaClass metaClass;

    explicit FBufferStream(CmBuffer& buffer) : buffer_(buffer) {}
    ~FBufferStream() override;

    using FStream::read;
    using FStream::write;
    // With nothing left the cursor goes to 0, and 0 comes back.
    std::int32_t read(void* buffer, std::int32_t size) override;
    std::int32_t write(const void* buffer, std::int32_t size) override;
    // From the start and from here the buffer first grows to the new position.
    std::int64_t seek(std::int64_t offset, SeekMode mode) override;
    std::int64_t tell() override;

protected:
    std::string_view bytesAhead() const override;

private:
    std::int64_t moveTo(std::int64_t position);

    CmBuffer& buffer_;
};

} // namespace tessera
