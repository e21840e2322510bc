// IXmlListener: who is told what FXmlParser2 finds. All texts are UTF-8, borrowed for the call.
//
// A listener that can't use what it is told stops the parser. Called on the thread that parses.
#pragma once

#include <cstdint>

namespace tessera {

struct IXmlParser;

struct IXmlListener {
    virtual ~IXmlListener() = default;

    // attributes: name and value in turn, and a null behind the last value.
    virtual void startElement(IXmlParser& parser, const char* name, const char* const* attributes) = 0;
    virtual void endElement(IXmlParser& parser, const char* name) = 0;
    // A stretch of text comes in any number of pieces, none of which ends with a NUL.
    virtual void characters(IXmlParser& parser, const char* text, std::int32_t length) = 0;
    virtual void comment(IXmlParser& parser, const char* text) = 0;
};

} // namespace tessera
