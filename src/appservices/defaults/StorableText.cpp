#include "appservices/defaults/StorableText.h"

#include "persistence/xml/XmlEntities.h"

#include <cstdint>
#include <string>

namespace tessera {

namespace {

// What a reader takes as the name and the value of one XML attribute, in bytes, and what a writer makes one of, in
// characters; a longer text has no such limit.
constexpr std::int32_t kLongestName = 47;
constexpr std::int32_t kLongestValue = 2047;
constexpr std::int32_t kLongestAttribute = 2048;

// No byte of an 8-bit text is written longer than as "&", the name of an entity and ";".
constexpr std::int32_t kLongestByte = sizeof(FXmlEntity::name) + 1;

// A pair of surrogates counts with its first half, 4 bytes in all.
std::int32_t writtenSize(char16_t unit) {
    switch (unit) {
    case u'"':
        return 6;
    case u'&':
        return 5;
    case u'<':
    case u'>':
        return 4;
    default:
        return unit < 0x80 ? 1 : unit < 0x800 ? 2 : (unit & 0xfc00) == 0xdc00 ? 1 : 3;
    }
}

// 8-bit text is written with more names than 16-bit text.
std::int32_t writtenSize(char c) {
    const auto byte = static_cast<std::uint8_t>(c);
    if (const char* name = writableXmlEntity(byte)) {
        return static_cast<std::int32_t>(std::char_traits<char>::length(name)) + 2;
    }
    // As a number: "&#xff;".
    return byte < 0x80 ? 1 : 6;
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

// Narrows the text, which is wide. False when the system's code page doesn't hold all of it.
bool narrowWithoutLoss(FString& text) {
    const FString before(text);
    if (!text.toMultiByte()) {
        return false;
    }
    FString again(text);
    return again.toWide() && again == before;
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
    // Names are written byte by byte, in 8 bits; two that look alike there would be one.
    FString narrow(key);
    if (narrow.isWide() && !narrowWithoutLoss(narrow)) {
        return false;
    }
    return writtenSize(narrow.view8()) <= kLongestName;
}

bool isStorableText(const FStringRef& text) {
    const std::int32_t length = text.length();
    if (length > kLongestAttribute || length <= kLongestValue / kLongestByte) {
        return true;
    }
    return writtenSize(text) <= kLongestValue;
}

} // namespace tessera
