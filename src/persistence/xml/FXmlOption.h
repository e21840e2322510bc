// FXmlOption: how FXmlParser reads; a set of bits. Nothing is set unless it is told.
#pragma once

#include <cstdint>

namespace tessera {

enum class FXmlOption : std::uint32_t {
    // Comments come through the callback; otherwise they are skipped.
    deliverComments = 1,
    // In an attribute's value a backslash keeps the next quote from ending it. The backslash stays in the value.
    backslashEscapesQuote = 2,
    // A comment ends at the first "-->"; otherwise comments stand in each other, and as many ends are looked for.
    commentsEndAtOnce = 4,
    // Blanks and tabs in front of a text belong to it.
    blanksAreText = 8,
    // The parse ends behind the tag that closes the outermost element.
    endWithLastTag = 16,
    // A value into which an entity brought a byte at or above 0x80 becomes 16-bit text of the system's code page, if
    // it means something there.
    widenEntityValues = 32,
    // Named entities give the byte of the second column.
    secondEntityColumn = 64,
};

enum class FXmlReadAhead : bool { block, none };

} // namespace tessera
