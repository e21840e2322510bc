// Streams as they come from pipes and sockets: that give a little at a time, that can't seek.
#pragma once

#include "persistence/streams/FMemoryStream.h"

#include <algorithm>
#include <string_view>

namespace tessera::test {

// Over text that outlives the stream.
class OddStream : public FMemoryStream {
public:
    explicit OddStream(std::string_view text)
        : FMemoryStream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size())) {}

    std::int32_t largestRead = kBlock;
    bool seeks = true;
    // Calls of read, and the bytes that each asked for at most.
    std::int32_t reads = 0;
    std::int32_t largestAsked = 0;

    using FMemoryStream::read;
    std::int32_t read(void* buffer, std::int32_t size) override {
        ++reads;
        largestAsked = std::max(largestAsked, size);
        return FMemoryStream::read(buffer, std::min(size, largestRead));
    }
    std::int64_t seek(std::int64_t offset, SeekMode mode) override {
        return seeks ? FMemoryStream::seek(offset, mode) : -1;
    }

private:
    static constexpr std::int32_t kBlock = 1 << 20;
};

} // namespace tessera::test
