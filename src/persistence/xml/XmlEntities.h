// XmlEntities: the named characters of this system's documents, and how they are turned back into bytes.
//
// Each entity stands for one byte: those below 0x80 are ASCII, those above of ISO 8859-1, or of an older 8-bit set in
// the second column. A few of them are written by name, all are read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace tessera {

enum class FXmlEntityColumn : bool { ansi, second };

struct FXmlEntity {
    char name[8];
    // In the first column, and in the second, where 0xFF stands for a character that the set doesn't have.
    std::uint8_t ansi;
    std::uint8_t second;
    bool writable;
};

// All rows, in their order. A name is looked up from the front, so the second of two rows of one name is never found.
std::span<const FXmlEntity> xmlEntities();
// The name that the byte is written by, or null.
const char* writableXmlEntity(std::uint8_t byte);

// Resolves "&name;", "&#nnn;" and "&#xhh;" in place and closes the text up; gives the new length. A number keeps its
// low eight bits. What is no entity, or stands for the byte 0, stays as it is. hasHighByte, if given, tells whether an
// entity gave a byte at or above 0x80.
std::size_t resolveXmlEntities(char* text, std::size_t length, FXmlEntityColumn column, bool* hasHighByte = nullptr);

} // namespace tessera
