// FXmlToken: what the tokenizer of FXmlParser can find next.
#pragma once

#include <cstdint>

namespace tessera {

enum class FXmlToken : std::int32_t {
    endOfStream = 0,
    error = 1,
    // "<" and the name, up to a blank, "/" or ">".
    startTag = 2,
    // "</", the name and ">".
    endTag = 3,
    // "/>"
    emptyTagEnd = 4,
    // name="value" or name='value'
    attribute = 5,
    // ">"
    tagEnd = 6,
    text = 7,
    lineEnd = 8,
    // Blanks and tabs.
    blanks = 9,
    // "<?" and the name.
    declaration = 10,
    // "?>"
    declarationEnd = 11,
    // "<!--"
    comment = 12,
    // "<![CDATA["
    cdata = 14,
    // "<!D" and what follows of "<!DOCTYPE".
    doctype = 16,
};

} // namespace tessera
