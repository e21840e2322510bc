// IDriverArbiter: shares the audio driver between the host and its guests.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IDriverClient;

struct IDriverArbiter : IBaseUnknown {
    static constexpr FUIDBytes iid = "{CE482897-5CAD-5C40-844F-186F9830343F}"_uid;

    // Slot 3. Main thread. The host holds one reference until removeClient.
    virtual FResult addClient(IDriverClient* client) = 0;

    // Slot 4. Main thread. kResultFalse for a client that was never added.
    virtual FResult removeClient(IDriverClient* client) = 0;

    // Slot 5. Main thread, for a client that was added. The host lets go of the driver before it returns. The text is
    // UTF-8, zero-terminated, and says what for. 0 when the driver is free.
    virtual std::int32_t requestRelease(IDriverClient* client, const char* text) = 0;

protected:
    ~IDriverArbiter() = default;
};

} // namespace tessera
