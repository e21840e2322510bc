// IStringResult: a foreign string object that takes and gives text of both widths.
//
// It begins with the slots of IStringSource, so one table serves both identifiers. Texts end with a NUL and are copied
// by the callee; what a getter gives belongs to the object, is never null, and stands until the object's next call.
#pragma once

#include "foundation/text/IStringSource.h"

namespace tessera {

struct IStringResult : IStringSource {
    static constexpr FUIDBytes iid = "{F99DB7A3-0FC1-4821-800B-0CF98E348EDF}"_uid;

    virtual void setText16(const char16_t* text) = 0;
    // Asking for the width that the object doesn't hold may convert it.
    virtual const char* getText8() = 0;
    virtual const char16_t* getText16() = 0;
    virtual bool isWide() = 0;
    virtual bool isEmpty() = 0;

protected:
    ~IStringResult() = default;
};

} // namespace tessera
