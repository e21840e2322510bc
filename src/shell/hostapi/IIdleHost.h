// IIdleHost: calls its clients whenever the host has time.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IIdleClient;

struct IIdleHost : IBaseUnknown {
    static constexpr FUIDBytes iid = "{9E871847-F1AB-4776-A06C-6F945D7FDD4D}"_uid;

    virtual void reserved3() = 0;

    // Slot 4. Main thread. The host holds no reference: a client that goes away removes itself first.
    virtual FResult addClient(IIdleClient* client) = 0;

    // Slot 5. Main thread, also from within onIdle. kResultFalse for a client that was never added.
    virtual FResult removeClient(IIdleClient* client) = 0;

protected:
    ~IIdleHost() = default;
};

} // namespace tessera
