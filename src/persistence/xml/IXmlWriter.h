// IXmlWriter: a writer of XML documents as a host or a plug-in sees it. Texts are 8-bit and end with a NUL.
//
// kResultOk; kResultFailure when the stream took less than it was given, or the element to be closed isn't the one
// that is open; kInvalidArgument for a null name or text.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IXmlWriter : IBaseUnknown {
    static constexpr FUIDBytes iid = "{E92C2869-6661-45D4-999A-FBD1CD8A4C2F}"_uid;

    // attributes: name and value in turn, and a null behind the last value; null for none.
    virtual FResult openElement(const char* name, const char* const* attributes, bool isEmpty) = 0;
    virtual FResult closeElement(const char* name) = 0;
    virtual FResult addComment(const char* text) = 0;
    virtual FResult addText(const char* text) = 0;

protected:
    ~IXmlWriter() = default;
};

} // namespace tessera
