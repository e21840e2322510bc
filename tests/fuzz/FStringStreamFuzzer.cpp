// Any bytes may stand in a stream where a string is expected. What is read ends with a NUL of its width, and what is
// written from it and read again is the same text in the same width, unless it is too long to be read back.
#include "foundation/text/FString.h"
#include "persistence/streams/FMemoryStream.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

using namespace tessera;

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void checkTerminated(const FString& text) {
    if (text.isNull()) {
        check(text.length() == 0);
    } else if (text.isWide()) {
        check(static_cast<const char16_t*>(text.rawText())[text.length()] == 0);
    } else {
        check(static_cast<const char*>(text.rawText())[text.length()] == 0);
    }
}

// Wide text travels as UTF-8 and grows; longer bodies are refused by the reader.
bool canBeReadBack(const FMemoryStream& written) {
    return written.getSize() - 4 <= FString::kMaximumStreamBytes;
}

// 8-bit text that looks marked is taken for UTF-8 when it comes back: the form can't tell the two apart.
bool looksMarked(const FString& text) {
    const FStringRef mark("\xef\xbb\xbf");
    return !text.isWide() && text.startsWith(mark);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLongest = 1 << 20;
    FMemoryStream stream(static_cast<const void*>(data), static_cast<std::int32_t>(std::min(size, kLongest)));
    FString text;
    while (stream.tell() < stream.getSize() && text.readString(stream)) {
        checkTerminated(text);
        FMemoryStream again;
        check(text.writeString(again));
        again.rewind();
        FString back;
        check(back.readString(again) == canBeReadBack(again));
        if (!canBeReadBack(again) || looksMarked(text)) {
            continue;
        }
        checkTerminated(back);
        // The empty string has no width in a stream.
        check(text.isEmpty() ? back.isEmpty() : back.view8() == text.view8() && back.view16() == text.view16());
    }
    return 0;
}
