#include "host/text/Text16.h"

#include <cstddef>
#include <cstdint>

namespace tessera::host {
namespace {

struct Lead {
    std::uint8_t mask;
    std::uint8_t bits;
    int following;
    char32_t smallest; // below it the sequence is longer than it must be
};

constexpr Lead kLeads[] = {
    {0x80, 0x00, 0, 0},
    {0xE0, 0xC0, 1, 0x80},
    {0xF0, 0xE0, 2, 0x800},
    {0xF8, 0xF0, 3, 0x10000},
};

constexpr bool isSurrogate(char32_t c) {
    return c >= 0xD800 && c <= 0xDFFF;
}

// The character at the position, which moves behind it.
std::optional<char32_t> nextCharacter(std::string_view utf8, std::size_t& position) {
    const auto first = static_cast<std::uint8_t>(utf8[position]);
    for (const Lead& lead : kLeads) {
        if ((first & lead.mask) != lead.bits) {
            continue;
        }
        char32_t c = first & static_cast<std::uint8_t>(~lead.mask);
        if (utf8.size() - position <= static_cast<std::size_t>(lead.following)) {
            return std::nullopt;
        }
        for (int i = 0; i < lead.following; ++i) {
            const auto next = static_cast<std::uint8_t>(utf8[++position]);
            if ((next & 0xC0) != 0x80) {
                return std::nullopt;
            }
            c = (c << 6) | (next & 0x3Fu);
        }
        ++position;
        if (c < lead.smallest || c > 0x10FFFF || isSurrogate(c)) {
            return std::nullopt;
        }
        return c;
    }
    return std::nullopt;
}

void appendUtf8(std::string& out, char32_t c) {
    const auto byte = [](char32_t bits) { return static_cast<char>(static_cast<unsigned char>(bits)); };
    if (c < 0x80) {
        out += byte(c);
    } else if (c < 0x800) {
        out += byte(0xC0 | (c >> 6));
        out += byte(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += byte(0xE0 | (c >> 12));
        out += byte(0x80 | ((c >> 6) & 0x3F));
        out += byte(0x80 | (c & 0x3F));
    } else {
        out += byte(0xF0 | (c >> 18));
        out += byte(0x80 | ((c >> 12) & 0x3F));
        out += byte(0x80 | ((c >> 6) & 0x3F));
        out += byte(0x80 | (c & 0x3F));
    }
}

} // namespace

std::optional<std::u16string> toText16(std::string_view utf8) {
    std::u16string result;
    result.reserve(utf8.size());
    for (std::size_t position = 0; position < utf8.size();) {
        const std::optional<char32_t> c = nextCharacter(utf8, position);
        if (!c) {
            return std::nullopt;
        }
        if (*c < 0x10000) {
            result += static_cast<char16_t>(*c);
        } else {
            result += static_cast<char16_t>(0xD800 + ((*c - 0x10000) >> 10));
            result += static_cast<char16_t>(0xDC00 + ((*c - 0x10000) & 0x3FF));
        }
    }
    return result;
}

std::optional<std::string> toUtf8(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        if (isSurrogate(c)) {
            const bool isPair = c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
            if (!isPair) {
                return std::nullopt;
            }
            c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00u);
        }
        appendUtf8(result, c);
    }
    return result;
}

void writeText16(std::string_view utf8, char16_t* buffer, int units) {
    const std::optional<std::u16string> text = toText16(utf8);
    if (!text || text->size() >= static_cast<std::size_t>(units)) {
        buffer[0] = 0;
        return;
    }
    text->copy(buffer, text->size());
    buffer[text->size()] = 0;
}

} // namespace tessera::host
