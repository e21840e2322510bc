// XmlEscape: text made fit for an attribute's value or a body. All that is written is appended to the buffer.
//
// False without memory; the buffer may hold a part of the text then. Neither text may lie in the buffer.
#pragma once

#include <string_view>

namespace tessera {

class FByteBuffer;

// basicOnly: "&", "<", ">" and the double quote become entities, and every other byte passes; any XML reader
// understands that. Otherwise each byte that has a name to be written by becomes it, and any other at or above 0x80
// becomes "&#x..;", a byte of UTF-8 as well: this form is for readers of ours.
bool escape8(FByteBuffer& buffer, std::string_view text, bool basicOnly);
// The four basic entities; all else becomes UTF-8.
bool escapeWide(FByteBuffer& buffer, std::u16string_view text);

} // namespace tessera
