// IPlugTarget: how another module gives the plug target that it has created an owner. See UPlugTarget.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IPlugTarget : IBaseUnknown {
    static constexpr FUIDBytes iid = "{69367430-9297-465D-A953-F7CA4DC8BAD1}"_uid;

    // Takes a reference; null for none.
    virtual void setOwner(IBaseUnknown* owner) = 0;
    // Borrowed.
    virtual IBaseUnknown* getOwner() = 0;

protected:
    ~IPlugTarget() = default;
};

} // namespace tessera
