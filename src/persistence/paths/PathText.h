// Helpers of the path classes: their texts as 16-bit views, and separators.
#pragma once

#include "foundation/text/FString.h"
#include "persistence/paths/PathRules.h"

#include <string>
#include <string_view>

namespace tessera::pathtext {

// The text brought to 16 bits in place; empty when its bytes mean nothing. Valid as long as the string isn't touched.
inline std::u16string_view viewOf(const FString& text) {
    const char16_t* characters = text.text16();
    return text.isWide() ? std::u16string_view(characters, static_cast<std::size_t>(text.length()))
                         : std::u16string_view();
}

// Bytes that mean nothing: a path with them has no text as a whole, and names nothing.
inline bool isMeaningless(const FString& text) {
    return !text.isEmpty() && viewOf(text).empty();
}

// A character for each byte of 8-bit text, as in Latin-1: for what has to tell apart, or to show, even such bytes.
inline std::u16string charactersOfBytes(const FString& text) {
    const auto* first = reinterpret_cast<const unsigned char*>(text.text8());
    return std::u16string(first, first + text.length());
}

inline std::u16string wideText(const FStringRef& text) {
    return std::u16string(viewOf(FString(text)));
}

inline FString stringOf(std::u16string_view text) {
    return FString(text.data(), static_cast<std::int32_t>(text.size()));
}

inline bool endsInSeparator(std::u16string_view text) {
    return !text.empty() && text.back() == kPathSeparator;
}

// A separator behind the text, unless it is empty or has one.
inline void closeFolder(std::u16string& text) {
    if (!text.empty() && !endsInSeparator(text)) {
        text.push_back(kPathSeparator);
    }
}

inline bool isDriveLetter(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

} // namespace tessera::pathtext
