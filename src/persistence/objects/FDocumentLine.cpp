#include "persistence/objects/FDocumentLine.h"

#include "foundation/text/FNumberText.h"
#include "foundation/text/FString.h"
#include "persistence/streams/FStream.h"
#include "persistence/xml/XmlEscape.h"

#include <algorithm>
#include <charconv>

namespace tessera {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr char kDigits[] = "0123456789ABCDEF";
constexpr std::size_t kLongestNumber = 64;
constexpr std::size_t kLongestLine = 0x7fffffff;

} // namespace

FDocumentLine::FDocumentLine(FStream& stream) : stream_(stream) {
    takeOverBuffer();
}

void FDocumentLine::takeOverBuffer() {
    start_ = reinterpret_cast<char*>(buffer_->getData());
    capacity_ = static_cast<std::size_t>(buffer_->getSize());
    length_ = static_cast<std::size_t>(buffer_->getFill());
}

char* FDocumentLine::reserveMore(std::size_t count) {
    const std::size_t needed = length_ + count;
    if (failed_ || needed > kLongestLine) {
        failed_ = true;
        return nullptr;
    }
    const std::size_t size = std::min(std::max(needed, capacity_ * 2), kLongestLine);
    buffer_->setFill(static_cast<std::int32_t>(length_));
    failed_ = !buffer_->setSize(static_cast<std::int32_t>(size));
    takeOverBuffer();
    return failed_ ? nullptr : start_ + length_;
}

void FDocumentLine::fill(char c, std::size_t count) {
    if (char* place = reserve(count)) {
        std::memset(place, c, count);
        length_ += count;
    }
}

void FDocumentLine::appendInt(std::int64_t value) {
    if (char* place = reserve(kLongestNumber)) {
        length_ += static_cast<std::size_t>(std::to_chars(place, place + kLongestNumber, value).ptr - place);
    }
}

void FDocumentLine::appendUnsigned(std::uint64_t value) {
    if (char* place = reserve(kLongestNumber)) {
        length_ += static_cast<std::size_t>(std::to_chars(place, place + kLongestNumber, value).ptr - place);
    }
}

void FDocumentLine::appendFloat(double value) {
    append(FNumberText::exact(value).view());
}

void FDocumentLine::appendHex(const std::uint8_t* bytes, std::int32_t count) {
    char* place = reserve(static_cast<std::size_t>(count) * 2);
    if (place == nullptr) {
        return;
    }
    for (std::int32_t i = 0; i < count; ++i) {
        *place++ = kDigits[bytes[i] >> 4];
        *place++ = kDigits[bytes[i] & 0xF];
    }
    length_ += static_cast<std::size_t>(count) * 2;
}

void FDocumentLine::appendEscaped8(const FStringRef& text) {
    if (!text.isWide()) {
        escapeInto([&](FByteBuffer& buffer) { return escape8(buffer, text.view8(), false); });
        return;
    }
    FString narrow(text);
    narrow.toMultiByte();
    escapeInto([&](FByteBuffer& buffer) { return escape8(buffer, narrow.view8(), false); });
}

void FDocumentLine::appendEscapedWide(const FStringRef& text) {
    if (text.isWide()) {
        escapeInto([&](FByteBuffer& buffer) { return escapeWide(buffer, text.view16()); });
        return;
    }
    FString wide(text);
    if (wide.toWide()) {
        escapeInto([&](FByteBuffer& buffer) { return escapeWide(buffer, wide.view16()); });
    } else {
        appendEscaped8(text);
    }
}

template <class Escape>
void FDocumentLine::escapeInto(Escape escape) {
    buffer_->setFill(static_cast<std::int32_t>(length_));
    failed_ = failed_ || !escape(*buffer_);
    takeOverBuffer();
}

bool FDocumentLine::end() {
    append(kLineEnd);
    const auto length = static_cast<std::int32_t>(length_);
    const bool written = !failed_ && stream_.write(start_, length) == length;
    length_ = 0;
    buffer_->setFill(0);
    return written;
}

} // namespace tessera
