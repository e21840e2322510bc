// The byte level of FXmlParser: blocks of the stream, one byte of look-ahead, and the count of lines.
#include "persistence/xml/FXmlParser.h"

#include "persistence/streams/FStream.h"

#include <cstring>

namespace tessera {

bool FXmlParser::refill() {
    std::uint8_t* block = readBuffer_.getData();
    if (block == nullptr) {
        return false;
    }
    const std::int32_t size = readBuffer_.getSize();
    std::int32_t filled = 0;
    if (pushedBackByte_ != kNoByte) {
        block[filled++] = static_cast<std::uint8_t>(pushedBackByte_);
        pushedBackByte_ = kNoByte;
    }
    if (filled < size && !streamEnded_) {
        const std::int32_t count = stream_ ? stream_->read(block + filled, size - filled) : 0;
        // Some streams begin anew when they are asked once more behind their end.
        streamEnded_ = count <= 0;
        filled += count > 0 ? count : 0;
    }
    bufferPosition_ = 0;
    readBuffer_.setFill(filled);
    return filled > 0;
}

int FXmlParser::peekAtStream() {
    if (pushedBackByte_ == kNoByte && !streamEnded_) {
        std::uint8_t byte = 0;
        if (stream_ && stream_->read(&byte, 1) == 1) {
            pushedBackByte_ = byte;
        } else {
            streamEnded_ = true;
        }
    }
    return pushedBackByte_;
}

bool FXmlParser::unreadByte() {
    if (bufferPosition_ > 0) {
        --bufferPosition_;
        return true;
    }
    // The block holds all that was read since the byte before it, but for the byte that was peeked at.
    const std::int64_t back = readBuffer_.getFill() + (pushedBackByte_ != kNoByte ? 1 : 0) + 1;
    const std::int64_t target = stream_ ? stream_->tell() - back : -1;
    if (target < 0 || stream_->seek(target, SeekMode::fromStart) != target) {
        errorState_ = FXmlError::endOfFile;
        return false;
    }
    pushedBackByte_ = kNoByte;
    streamEnded_ = false;
    return refill();
}

// Passes over bytes that are the first of bytesAhead.
void FXmlParser::takeLines(std::string_view bytes) {
    bufferPosition_ += static_cast<std::int32_t>(bytes.size());
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    while (at != end) {
        const auto rest = static_cast<std::size_t>(end - at);
        const auto* feed = static_cast<const char*>(std::memchr(at, '\n', rest));
        const char* stop = feed != nullptr ? feed : end;
        // Returns that stand alone, and the one in front of the feed.
        while (const void* found = std::memchr(at, '\r', static_cast<std::size_t>(stop - at))) {
            at = static_cast<const char*>(found) + 1;
            ++lineNumber_;
            afterReturn_ = true;
        }
        afterReturn_ = afterReturn_ && at == stop;
        if (feed == nullptr) {
            return;
        }
        countLine('\n');
        at = feed + 1;
    }
}

} // namespace tessera
