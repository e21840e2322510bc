// The texts that the benchmarks of strings work on, the same ones in every run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tessera::benchmarks {

// Which letters the text is made of; each name tells what UTF-8 makes of them.
enum class Script { ascii, latin, cjk };

// Words of one to nine letters with blanks between them. Latin text has an accented letter in about every sixth place,
// as French has; CJK text has a full stop now and then and no blanks.
inline std::u16string words(Script script, std::size_t length) {
    constexpr std::u16string_view kLetters = u"eeetttaaoiinnsshhrrdlu";
    constexpr std::u16string_view kAccents = u"\u00e9\u00e8\u00e0\u00fc\u00f6";
    std::u16string text;
    text.reserve(length);
    std::uint32_t random = 42;
    std::size_t word = 0;
    while (text.size() < length) {
        random = random * 1664525 + 1013904223;
        const std::uint32_t value = random >> 8;
        if (script == Script::cjk) {
            text += value % 20 == 0 ? u'.' : static_cast<char16_t>(0x4e00 + value % 0x5000);
        } else if (word == 0) {
            word = 1 + value % 9;
            text += u' ';
        } else {
            --word;
            const bool accent = script == Script::latin && value % 6 == 0;
            text += accent ? kAccents[(value >> 8) % kAccents.size()] : kLetters[(value >> 8) % kLetters.size()];
        }
    }
    return text;
}

// ASCII alone.
inline std::string bytes(std::u16string_view text) {
    return std::string(text.begin(), text.end());
}

} // namespace tessera::benchmarks
