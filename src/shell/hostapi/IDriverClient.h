// IDriverClient: one of those between whom the host's driver arbiter shares the audio driver. Implemented by the
// module, given to IDriverArbiter.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IDriverClient : IBaseUnknown {
    static constexpr FUIDBytes iid = "{19B9CB1D-A2B9-AD43-86C0-874BA552D944}"_uid;

    // Slot 3. Main thread, between addClient and removeClient. The client lets go of the driver before it returns,
    // which may take up to 8 seconds. The text, zero-terminated and the host's, names what the driver is wanted for.
    // Always kResultOk.
    virtual FResult suspend(void* unused, const char16_t* text) = 0;

    // Slot 4. Main thread, between addClient and removeClient. Returns kResultOk at once.
    virtual FResult reserved4() = 0;

protected:
    ~IDriverClient() = default;
};

} // namespace tessera
