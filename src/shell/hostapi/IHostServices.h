// IHostServices: where a guest finds every other service of the host. Asked of the host's context.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IHostServices : IBaseUnknown {
    static constexpr FUIDBytes iid = "{EEC89683-80DB-4336-9177-273E138A763B}"_uid;

    // Slot 3. Any time between initialize and terminate, main thread. kResultOk with one reference in *out that
    // belongs to the caller; kNoInterface with null for a service that this host lacks. Where a service says so, each
    // call gives a new object.
    virtual FResult queryService(const FUIDBytes& uid, void** out) = 0;

protected:
    ~IHostServices() = default;
};

} // namespace tessera
