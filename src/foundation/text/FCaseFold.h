// FCaseFold: the ideas of equal letters behind every operation that ignores case.
//
// A character that is looked for folds as the system maps single characters to their small form: fold and equal. In
// texts that are compared it folds as in the system's comparisons: foldInText and equalInText, which take 8-bit
// characters by ASCII alone, and 16-bit ones by no more letters than the system does there.
// May be called from any thread; the table of 16-bit characters is made at the first character beyond ASCII.
#pragma once

#include "foundation/text/FTextOptions.h"

namespace tessera {

class FCaseFold {
public:
    static char fold(char c) { return isAscii(c) ? foldAscii(c) : foldBeyondAscii(c); }
    static char16_t fold(char16_t c) { return isAscii(c) ? foldAscii(c) : foldBeyondAscii(c); }

    static char foldInText(char c) { return foldAscii(c); }
    static char16_t foldInText(char16_t c) { return isAscii(c) ? foldAscii(c) : foldTextBeyondAscii(c); }

    template <class Character>
    static bool equal(Character a, Character b, FCase folding) {
        return a == b || (folding == FCase::ignore && fold(a) == fold(b));
    }
    template <class Character>
    static bool equalInText(Character a, Character b, FCase folding) {
        return a == b || (folding == FCase::ignore && foldInText(a) == foldInText(b));
    }

private:
    template <class Character>
    static bool isAscii(Character c) {
        return (c & ~0x7f) == 0;
    }
    template <class Character>
    static Character foldAscii(Character c) {
        return c >= 'A' && c <= 'Z' ? static_cast<Character>(c + 32) : c;
    }
    static char foldBeyondAscii(char c);
    static char16_t foldBeyondAscii(char16_t c);
    static char16_t foldTextBeyondAscii(char16_t c);
};

} // namespace tessera
