// IValueOwner: the owner of values in another module, told by UPlugTarget when one of them is about to be edited and
// when the edit is over.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IValue;

struct IValueOwner : IBaseUnknown {
    static constexpr FUIDBytes iid = "{FD4E5827-C898-4306-B49D-F0B78A80AF22}"_uid;

    // The value is borrowed for the call.
    virtual void beginEdit(IValue* value) = 0;
    virtual void endEdit(IValue* value) = 0;

protected:
    ~IValueOwner() = default;
};

} // namespace tessera
