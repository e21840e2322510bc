// IPersistentObject: what an object of another module offers so that this framework can save and restore it.
//
// attributes is a tree of named values, borrowed for the call. All three answer kResultOk, or anything else for a
// failure.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IAttributes;

struct IPersistentObject : IBaseUnknown {
    static constexpr FUIDBytes iid = "{BA1A4637-3C9F-46D0-A65D-BA0EB85DA829}"_uid;

    virtual FResult getClassUID(FUIDBytes& uid) = 0;
    virtual FResult saveAttributes(IAttributes* attributes) = 0;
    virtual FResult loadAttributes(IAttributes* attributes) = 0;

protected:
    ~IPersistentObject() = default;
};

} // namespace tessera
