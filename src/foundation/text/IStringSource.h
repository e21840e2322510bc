// IStringSource: a foreign string object that takes 8-bit text.
//
// The text ends with a NUL and is copied by the callee; null stands for the empty text.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IStringSource : IBaseUnknown {
    static constexpr FUIDBytes iid = "{550798BC-8720-49DB-8492-0A153B50B7A8}"_uid;

    virtual void setText8(const char* text) = 0;

protected:
    ~IStringSource() = default;
};

} // namespace tessera
