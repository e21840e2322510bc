// FDocumentLine: a line of a document that is being put together, and the stream that it goes to.
//
// The line lies in a scratch buffer of the process, which grows for a line that needs more, and goes to the stream in
// one piece when it is ended. Where memory runs out the rest of the line is dropped, and end is false.
#pragma once

#include "persistence/objects/FScratchBufferPool.h"

#include <cstdint>
#include <cstring>
#include <string_view>

namespace tessera {

class FStream;
class FStringRef;

class FDocumentLine {
public:
    explicit FDocumentLine(FStream& stream);
    FDocumentLine(const FDocumentLine&) = delete;
    FDocumentLine& operator=(const FDocumentLine&) = delete;

    void append(std::string_view text) {
        if (char* place = reserve(text.size())) {
            std::memcpy(place, text.data(), text.size());
            length_ += text.size();
        }
    }
    void append(char c) {
        if (char* place = reserve(1)) {
            *place = c;
            ++length_;
        }
    }
    // Three blanks for each level.
    void indent(int level) { fill(' ', static_cast<std::size_t>(level) * 3); }
    void tabs(int count) { fill('\t', static_cast<std::size_t>(count)); }
    void appendInt(std::int64_t value);
    void appendUnsigned(std::uint64_t value);
    // With all decimals, up to fifty digits.
    void appendFloat(double value);
    // Upper-case digits, two for each byte.
    void appendHex(const std::uint8_t* bytes, std::int32_t count);
    // As an 8-bit text is escaped; 16-bit text is brought to 8 bits first.
    void appendEscaped8(const FStringRef& text);
    // As a 16-bit text is escaped, in UTF-8; 8-bit text is widened first, where that can be done.
    void appendEscapedWide(const FStringRef& text);

    // Sends the line with its CR LF, and begins a new one. False when not all of it was written.
    bool end();

private:
    // Where the next so many bytes go; null without memory.
    char* reserve(std::size_t count) { return count <= capacity_ - length_ ? start_ + length_ : reserveMore(count); }
    char* reserveMore(std::size_t count);
    void fill(char c, std::size_t count);
    // What works on the buffer itself, between a writing back of length_ and a taking over of what has become of it.
    template <class Escape>
    void escapeInto(Escape escape);
    void takeOverBuffer();

    FStream& stream_;
    FScratchBuffer buffer_;
    char* start_ = nullptr;
    std::size_t capacity_ = 0;
    std::size_t length_ = 0;
    bool failed_ = false;
};

} // namespace tessera
