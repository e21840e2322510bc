#include "persistence/streams/FBufferStream.h"

#include "foundation/containers/CmBuffer.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace tessera {

FBufferStream::~FBufferStream() = default;

std::int32_t FBufferStream::read(void* buffer, std::int32_t size) {
    const std::int32_t cursor = buffer_.getFill();
    const std::int32_t left = buffer_.getSize() - cursor;
    if (left <= 0) {
        buffer_.setFill(0);
        return 0;
    }
    if (buffer == nullptr || size <= 0) {
        return 0;
    }
    const std::int32_t count = std::min(size, left);
    std::memcpy(buffer, buffer_.getData() + cursor, static_cast<std::size_t>(count));
    buffer_.setFill(cursor + count);
    return count;
}

std::int32_t FBufferStream::write(const void* buffer, std::int32_t size) {
    return buffer_.append(buffer, size) ? size : 0;
}

std::int64_t FBufferStream::seek(std::int64_t offset, SeekMode mode) {
    // No buffer is as long as that, and sums stay within 64 bits.
    constexpr std::int64_t kFarthest = std::numeric_limits<std::int32_t>::max();
    if (offset < -kFarthest || offset > kFarthest) {
        return -1;
    }
    if (mode == SeekMode::fromEnd) {
        return moveTo(buffer_.getSize() - offset);
    }
    const std::int64_t base = mode == SeekMode::fromHere ? buffer_.getFill() : 0;
    const std::int64_t position = base + offset;
    if (position > kFarthest) {
        return -1;
    }
    if (position > buffer_.getSize() && !buffer_.setSize(static_cast<std::int32_t>(position))) {
        return -1;
    }
    return moveTo(position);
}

std::int64_t FBufferStream::tell() {
    return buffer_.getFill();
}

std::string_view FBufferStream::bytesAhead() const {
    const std::int32_t cursor = buffer_.getFill();
    return {reinterpret_cast<const char*>(buffer_.getData()) + cursor,
            static_cast<std::size_t>(buffer_.getSize() - cursor)};
}

// Positions outside the buffer leave the cursor where it is.
std::int64_t FBufferStream::moveTo(std::int64_t position) {
    if (position < 0 || position > buffer_.getSize()) {
        return -1;
    }
    buffer_.setFill(static_cast<std::int32_t>(position));
    return position;
}

} // namespace tessera
