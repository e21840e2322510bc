#include "appservices/defaults/StorableText.h"

#include <cstdint>

namespace tessera {

namespace {

// What a reader takes as the name and the value of one XML attribute, in bytes, and what a writer makes one of, in
// characters; a longer text has no such limit.
constexpr std::int32_t kLongestName = 47;
constexpr std::int32_t kLongestValue = 2047;
constexpr std::int32_t kLongestAttribute = 2048;

// "&Atilde;"; no byte is written longer.
constexpr std::int32_t kLongestByte = 8;

std::int32_t escapedSize(char32_t c) {
    switch (c) {
    case U'"':
        return 6;
    case U'&':
        return 5;
    case U'<':
    case U'>':
        return 4;
    default:
        return 1;
    }
}

// A pair of surrogates counts with its first half, 4 bytes in all.
std::int32_t writtenSize(char16_t unit) {
    if (unit < 0x80) {
        return escapedSize(unit);
    }
    return unit < 0x800 ? 2 : (unit & 0xfc00) == 0xdc00 ? 1 : 3;
}

std::int32_t writtenSize(char c) {
    return static_cast<unsigned char>(c) < 0x80 ? escapedSize(static_cast<unsigned char>(c)) : kLongestByte;
}

template <class View>
std::int32_t writtenSize(const View& text) {
    std::int32_t size = 0;
    for (const auto c : text) {
        size += writtenSize(c);
    }
    return size;
}

std::int32_t writtenSize(const FStringRef& text) {
    return text.isWide() ? writtenSize(text.view16()) : writtenSize(text.view8());
}

} // namespace

FString storableForm(const FStringRef& text) {
    FString form(text);
    if (!form.isWide() && !form.isAscii()) {
        // Bytes that mean nothing stay what they are.
        static_cast<void>(form.toWide());
    }
    return form;
}

bool isStorableKey(const FStringRef& key) {
    if (key.isEmpty()) {
        return false;
    }
    // Names are written byte by byte, in 8 bits.
    const FString narrow(key);
    return (!narrow.isWide() || narrow.toMultiByte()) && writtenSize(narrow.view8()) <= kLongestName;
}

bool isStorableText(const FStringRef& text) {
    const std::int32_t length = text.length();
    if (length > kLongestAttribute || length <= kLongestValue / kLongestByte) {
        return true;
    }
    return writtenSize(text) <= kLongestValue;
}

} // namespace tessera
