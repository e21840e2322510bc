// SlowStream: a document that comes in small pieces, for fuzz targets that compare where the pieces end. The text
// outlives the stream.
#pragma once

#include "persistence/streams/FMemoryStream.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace tessera::fuzz {

class SlowStream : public FMemoryStream {
public:
    SlowStream(std::string_view text, std::int32_t largestRead)
        : FMemoryStream(static_cast<const void*>(text.data()), static_cast<std::int32_t>(text.size())),
          largestRead_(largestRead) {}

    using FMemoryStream::read;
    std::int32_t read(void* buffer, std::int32_t size) override {
        return FMemoryStream::read(buffer, std::min(size, largestRead_));
    }

private:
    std::int32_t largestRead_;
};

} // namespace tessera::fuzz
