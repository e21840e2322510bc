// WideText: 16-bit text between our char16_t and the wchar_t of the Windows calls, and UTF-8 for the services that
// speak it. Never fails: what is no valid text becomes U+FFFD.
#pragma once

#include "platform/Utf8Text.h"

#include <string>
#include <string_view>

namespace tessera::platform {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

// The same units, for a call of the system that takes or fills them. Only the system looks at them through the pointer,
// so the two types are never mixed up in code that the compiler sees.
inline const wchar_t* wide(const char16_t* text) {
    return reinterpret_cast<const wchar_t*>(text);
}

inline wchar_t* wide(char16_t* buffer) {
    return reinterpret_cast<wchar_t*>(buffer);
}

// Copies, which end in a NUL as c_str() and data() of these types do.
inline std::wstring wideText(std::u16string_view text) {
    return {text.begin(), text.end()};
}

inline std::u16string textOf(std::wstring_view text) {
    return {text.begin(), text.end()};
}

// UTF-8 to 16-bit text; one U+FFFD for each byte that begins no character.
inline std::u16string utf16Of(std::string_view utf8) {
    std::u16string text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        if (const auto c = takeUtf8(utf8)) {
            appendUtf16(text, *c);
        } else {
            text.push_back(u'\uFFFD');
            utf8.remove_prefix(1);
        }
    }
    return text;
}

inline std::wstring wideText(std::string_view utf8) {
    return wideText(utf16Of(utf8));
}

// 16-bit text to UTF-8; U+FFFD for half a surrogate pair.
inline std::string utf8Of(std::u16string_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (isHighSurrogate(unit) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
            appendUtf8(utf8, joined(unit, text[++i]));
        } else {
            appendUtf8(utf8, isHighSurrogate(unit) || isLowSurrogate(unit) ? U'\uFFFD' : char32_t{unit});
        }
    }
    return utf8;
}

inline std::string utf8Of(std::wstring_view text) {
    return utf8Of(textOf(text));
}

} // namespace tessera::platform
