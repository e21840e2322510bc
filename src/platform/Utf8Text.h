// Utf8Text: one character at a time between UTF-8 and 16-bit text.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

namespace tessera::platform {

inline bool isHighSurrogate(char16_t unit) {
    return (unit & 0xfc00) == 0xd800;
}

inline bool isLowSurrogate(char16_t unit) {
    return (unit & 0xfc00) == 0xdc00;
}

inline char32_t joined(char16_t high, char16_t low) {
    return (char32_t(high) << 10) + low - ((0xd800u << 10) + 0xdc00u - 0x10000u);
}

inline void appendUtf8(std::string& text, char32_t c) {
    const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    const auto putRest = [&put, c](int shift) { put(0x80 | ((c >> shift) & 0x3f)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xc0 | (c >> 6));
        putRest(0);
    } else if (c < 0x10000) {
        put(0xe0 | (c >> 12));
        putRest(6);
        putRest(0);
    } else {
        put(0xf0 | (c >> 18));
        putRest(12);
        putRest(6);
        putRest(0);
    }
}

inline void appendUtf16(std::u16string& text, char32_t c) {
    if (c < 0x10000) {
        text.push_back(static_cast<char16_t>(c));
        return;
    }
    text.push_back(static_cast<char16_t>(0xd7c0 + (c >> 10)));
    text.push_back(static_cast<char16_t>(0xdc00 + (c & 0x3ff)));
}

struct Utf8Lead {
    std::uint8_t mask;
    std::uint8_t value;
    std::uint8_t following;
    // Anything below would be an overlong spelling.
    char32_t smallest;
};

inline constexpr Utf8Lead kUtf8Leads[] = {
    {0x80, 0x00, 0, 0},
    {0xe0, 0xc0, 1, 0x80},
    {0xf0, 0xe0, 2, 0x800},
    {0xf8, 0xf0, 3, 0x10000},
};

// Whether halves of surrogate pairs may stand for themselves: text that is ours alone keeps every 16-bit text so.
enum class LoneSurrogates { refused, allowed };

// One character off the front of the text, which isn't empty; nothing where that is no valid UTF-8.
inline std::optional<char32_t> takeUtf8(std::string_view& text, LoneSurrogates lone = LoneSurrogates::refused) {
    const auto first = static_cast<std::uint8_t>(text[0]);
    const auto lead = std::find_if(std::begin(kUtf8Leads), std::end(kUtf8Leads),
                                   [first](const Utf8Lead& entry) { return (first & entry.mask) == entry.value; });
    if (lead == std::end(kUtf8Leads) || text.size() <= lead->following) {
        return std::nullopt;
    }
    char32_t c = first & static_cast<std::uint8_t>(~lead->mask);
    for (std::size_t i = 1; i <= lead->following; ++i) {
        const auto byte = static_cast<std::uint8_t>(text[i]);
        if ((byte & 0xc0) != 0x80) {
            return std::nullopt;
        }
        c = (c << 6) | (byte & 0x3f);
    }
    const bool isSurrogate = c >= 0xd800 && c < 0xe000;
    if (c < lead->smallest || c > 0x10ffff || (isSurrogate && lone == LoneSurrogates::refused)) {
        return std::nullopt;
    }
    text.remove_prefix(lead->following + 1u);
    return c;
}

} // namespace tessera::platform
