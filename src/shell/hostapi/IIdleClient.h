// IIdleClient: called by the host whenever it has time. Implemented by the module, given to IIdleHost.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IIdleClient : IBaseUnknown {
    static constexpr FUIDBytes iid = "{D70BBB58-C805-45B8-AB82-64180B673A84}"_uid;

    // Slot 3. Main thread, between addClient and removeClient. It may add and remove idle clients, itself included.
    virtual void onIdle() = 0;

protected:
    ~IIdleClient() = default;
};

} // namespace tessera
