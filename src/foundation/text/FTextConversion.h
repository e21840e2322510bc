// FTextConversion: text and single characters between a code page and 16 bits. Internal to the text folder.
//
// UTF-8 is converted here, every other code page by the system. Measure first: -1 says that the text can't be converted
// at all, and then convert into exactly that much room.
#pragma once

#include "foundation/text/FTextOptions.h"

#include <cstddef>
#include <string_view>

namespace tessera {

class FTextConversion {
public:
    static std::ptrdiff_t widenedLength(CodePage page, std::string_view text);
    // The number of code units written, or -1. Only this finds out whether UTF-8 is valid.
    static std::ptrdiff_t widen(CodePage page, std::string_view text, char16_t* target, std::size_t capacity);
    static std::ptrdiff_t narrowedLength(CodePage page, std::u16string_view text);
    static std::ptrdiff_t narrow(CodePage page, std::u16string_view text, char* target, std::size_t capacity);

    // One character in the system's code page. False when it isn't one character on the other side.
    static bool widenCharacter(char c, char16_t& out);
    static bool narrowCharacter(char16_t c, char& out);
};

} // namespace tessera
