// IXmlParser: what a listener, or a host, can ask of a parser that is at work, whichever of the two it is.
//
// Used on the parser's own thread. The parser isn't reference counted: it outlives the call in which it is passed, and
// no more.
#pragma once

#include "foundation/text/FString.h"

#include <cstdint>

namespace tessera {

struct IXmlParser {
    // Ends the parse at the next token. What resumable means is told by the parser.
    virtual void stop(bool resumable) = 0;
    virtual std::int64_t lineNumber() const = 0;
    virtual FString getErrorText() const = 0;

protected:
    ~IXmlParser() = default;
};

} // namespace tessera
