// FTextScan: the loops of comparing and searching, on stretches of text of one width. Internal to the text folder.
//
// Everything goes by length. Where an operation ends at a NUL it says so.
#pragma once

#include "foundation/text/FTextOptions.h"

#include <cstddef>
#include <string_view>

namespace tessera {

class FTextScan {
public:
    static constexpr std::size_t kNothing = std::string_view::npos;

    // Negative, zero or positive. Ends at the first NUL in either text; the end of a text counts as one.
    static int compare(std::string_view a, std::string_view b, FCase folding);
    static int compare(std::u16string_view a, std::u16string_view b, FCase folding);

    // The first position at which the two differ, their ends compared as well; kNothing if there is none up to the
    // first NUL.
    static std::size_t difference(std::string_view a, std::string_view b, FCase folding);
    static std::size_t difference(std::u16string_view a, std::u16string_view b, FCase folding);

    // Where the first occurrence of the needle begins, looking at positions below limit only; or kNothing. The needle
    // isn't empty.
    static std::size_t find(std::string_view text, std::string_view needle, std::size_t limit, FCase folding);
    static std::size_t find(std::u16string_view text, std::u16string_view needle, std::size_t limit, FCase folding);

    static std::size_t findCharacter(std::string_view text, char c, FCase folding);
    static std::size_t findCharacter(std::u16string_view text, char16_t c, FCase folding);

    static std::size_t count(std::string_view text, char c, FCase folding);
    static std::size_t count(std::u16string_view text, char16_t c, FCase folding);

    static bool isAscii(std::string_view text);
    static bool isAscii(std::u16string_view text);
};

} // namespace tessera
