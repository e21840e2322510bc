// IObjectTest: tells whether two pointers mean one object, whichever of its tables they point at.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IObjectTest : IBaseUnknown {
    static constexpr FUIDBytes iid = "{0407EB04-3713-4E28-9A82-34AB4877B109}"_uid;

    // Slot 3. Main thread. kResultOk for the same object, two nulls included; kResultFalse for different ones.
    virtual FResult compare(IBaseUnknown* a, IBaseUnknown* b) = 0;

protected:
    ~IObjectTest() = default;
};

} // namespace tessera
