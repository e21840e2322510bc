// IExportHost: tells who listens about every audio export.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IExportListener;

struct IExportHost : IBaseUnknown {
    static constexpr FUIDBytes iid = "{3AC77C2D-00C5-4B36-85A8-A395DA577AF3}"_uid;

    // Slot 3. Main thread. The host holds one reference until removeListener.
    virtual FResult addListener(IExportListener* listener) = 0;

    // Slot 4. Main thread. kResultFalse for a listener that was never added.
    virtual FResult removeListener(IExportListener* listener) = 0;

protected:
    ~IExportHost() = default;
};

} // namespace tessera
