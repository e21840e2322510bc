// IValueBracket: the side of a value that faces its target: whoever edits opens the bracket, changes the value as often
// as need be, and closes it, so that the target sees one edit. The second interface of UValue.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IValueBracket : IBaseUnknown {
    static constexpr FUIDBytes iid = "{60321AB8-C997-4497-A191-2096B5404AF4}"_uid;

    // fromUser: a person edits, not the program.
    virtual void beginEdit(bool fromUser) = 0;
    virtual void endEdit(bool fromUser) = 0;

protected:
    ~IValueBracket() = default;
};

} // namespace tessera
