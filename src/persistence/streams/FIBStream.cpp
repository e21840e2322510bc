#include "persistence/streams/FIBStream.h"

namespace tessera {

FIBStream::~FIBStream() = default;

std::int32_t FIBStream::read(void* buffer, std::int32_t size) {
    std::int32_t count = 0;
    return stream_ && stream_->read(buffer, size, &count) == kResultOk ? count : 0;
}

// A stream that takes a part tells failure and the count: the count is what callers here want.
std::int32_t FIBStream::write(const void* buffer, std::int32_t size) {
    std::int32_t count = 0;
    if (stream_) {
        stream_->write(buffer, size, &count);
    }
    return count;
}

std::int64_t FIBStream::seek(std::int64_t offset, SeekMode mode) {
    std::int64_t position = 0;
    if (!stream_ || stream_->seek(offset, static_cast<std::int32_t>(mode), &position) != kResultOk) {
        return -1;
    }
    return position;
}

std::int64_t FIBStream::tell() {
    std::int64_t position = 0;
    return stream_ && stream_->tell(&position) == kResultOk ? position : -1;
}

} // namespace tessera
