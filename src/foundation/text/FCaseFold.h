// FCaseFold: the one idea of equal letters behind every operation that ignores case.
//
// 8-bit characters fold by ASCII alone, 16-bit ones by the system's mapping of single characters to their small form.
// May be called from any thread; the table of 16-bit characters is made at the first character beyond ASCII.
#pragma once

#include "foundation/text/FTextOptions.h"

namespace tessera {

class FCaseFold {
public:
    static char fold(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
    static char16_t fold(char16_t c) {
        if (c < 0x80) {
            return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
        }
        return foldBeyondAscii(c);
    }

    template <class Character>
    static bool equal(Character a, Character b, FCase folding) {
        return a == b || (folding == FCase::ignore && fold(a) == fold(b));
    }

private:
    static char16_t foldBeyondAscii(char16_t c);
};

} // namespace tessera
