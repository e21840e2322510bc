// A string in a stream, in bytes:
//
//   4  count of the bytes that follow, signed; 0 for the empty string
//   n  the text and a NUL
//   3  EF BB BF, if the text is UTF-8 and was 16 bits wide; older files have the mark in front of the text instead
//
// The mark stands behind the text so that a reader that knows 8-bit text alone takes the NUL for the end and still gets
// something that it can show.
#include "foundation/text/FString.h"
#include "foundation/text/FVariant.h"
#include "persistence/attributes/IAttributes.h"
#include "persistence/streams/FStream.h"

#include <cstdlib>
#include <cstring>
#include <string_view>

namespace tessera {
namespace {

constexpr std::string_view kUtf8Mark = "\xef\xbb\xbf";

bool writeBytes(FStream& stream, const void* bytes, std::size_t size) {
    return size == 0 || stream.write(bytes, static_cast<std::int32_t>(size)) == static_cast<std::int32_t>(size);
}

} // namespace

bool FString::writeString(FStream& stream) const {
    if (isEmpty()) {
        return stream.writeInt32(0);
    }
    // Converting happens on a copy: writing leaves this string in the width that it has.
    FString utf8;
    if (isWide() && (!utf8.assign(*this) || !utf8.toMultiByte(CodePage::utf8))) {
        return false;
    }
    const FString& source = isWide() ? utf8 : *this;
    const std::size_t size = static_cast<std::size_t>(source.characters()) + 1;
    const std::size_t mark = isWide() ? kUtf8Mark.size() : 0;
    // 30 bits of length, so the count doesn't overflow. Text that begins with a NUL has narrowed to none, and only the
    // NUL is written.
    return stream.writeInt32(static_cast<std::int32_t>(size + mark)) && writeBytes(stream, source.text8(), size) &&
           writeBytes(stream, kUtf8Mark.data(), mark);
}

bool FString::readString(FStream& stream) {
    std::int32_t count = 0;
    if (!stream.readInt32(count)) {
        return false;
    }
    if (count > kMaximumStreamBytes) {
        stream.seek(count, SeekMode::fromHere);
        return false;
    }
    clear();
    if (count < 1) {
        return true;
    }
    auto length = static_cast<std::size_t>(count);
    auto* const text = static_cast<char*>(std::malloc(length + 1));
    if (text == nullptr) {
        return false;
    }
    if (stream.read(text, count) != count) {
        std::free(text);
        return false;
    }
    const std::string_view bytes(text, length);
    const bool marked = bytes.ends_with(kUtf8Mark) && bytes.size() > kUtf8Mark.size();
    const bool markedInFront = !marked && bytes.starts_with(kUtf8Mark);
    if (marked || markedInFront) {
        length -= kUtf8Mark.size();
    }
    if (markedInFront) {
        std::memmove(text, text + kUtf8Mark.size(), length);
    }
    if (length > 0 && text[length - 1] == '\0') {
        --length;
    }
    text[length] = '\0';
    own(text, length, FTextWidth::narrow);
    if (marked || markedInFront) {
        // What turns out not to be UTF-8 stays as the bytes that came.
        toWide(CodePage::utf8);
    }
    return true;
}

bool FString::getAttribute(IAttributes& list, const char* key) {
    FVariant value;
    if (list.get(key, value) != kResultOk) {
        return false;
    }
    const bool isText = value.type() == FVariant::kText8 || value.type() == FVariant::kText16;
    return isText && assignVariant(value);
}

bool FString::setAttribute(IAttributes& list, const char* key) const {
    FVariant value;
    toVariant(value);
    return list.set(key, value) == kResultOk;
}

} // namespace tessera
