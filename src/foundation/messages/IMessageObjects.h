// IMessageObjects: the object side of a message; keys as in IMessageAccess.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IMessageObjects : IBaseUnknown {
    static constexpr FUIDBytes iid = "{9B3554AA-04E9-4449-9034-D05B61F454F0}"_uid;

    // With own the message takes the caller's reference over, else it takes one of its own. A null object removes the
    // key.
    virtual FResult setObject(const char* key, IBaseUnknown* object, bool own) = 0;
    // Borrowed. kResultFalse, with *out untouched, when the key is missing.
    virtual FResult getObject(const char* key, IBaseUnknown** out) = 0;

protected:
    ~IMessageObjects() = default;
};

} // namespace tessera
