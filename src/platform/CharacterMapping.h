// CharacterMapping: case and class of single characters, and composition, as the system sees them.
//
// 16-bit characters are single code units; a half of a surrogate pair has no case and no class. No operation keeps
// state, and each may be called from any thread.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tessera::platform {

// A small letter for a capital one and the other way round; any other character comes back as it is.
char16_t lowerCase(char16_t c);
char16_t upperCase(char16_t c);

// The same in the system's code page, where that gives every character one byte. Elsewhere bytes from 0x80 up stay.
char lowerCase(char c);
char upperCase(char c);

// What the system's comparisons of whole texts take a character for when they ignore case. Some fold fewer letters
// there than when they are asked for one of them; comparesByLowerCase says whether this is lowerCase.
char16_t comparisonCase(char16_t c);
bool comparesByLowerCase();

bool isLetter(char16_t c);
bool isLetterOrDigit(char16_t c);
bool isLowerLetter(char16_t c);
bool isUpperLetter(char16_t c);
// The white space of the system: breaking and non-breaking blanks, line ends and tabulators.
bool isWhiteSpace(char16_t c);

// The composed form (NFC) of the text. The number of code units of the result, which are written only if they fit into
// capacity; -1 when the system refuses the text.
std::ptrdiff_t compose(const char16_t* text, std::size_t length, char16_t* target, std::size_t capacity);

} // namespace tessera::platform
