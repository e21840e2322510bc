// ICommandHandler: answers for a command that was entered in ICommandTable. Implemented by the module, given to
// ICommandTarget.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct ICommandHandler : IBaseUnknown {
    static constexpr FUIDBytes iid = "{9FC17BEB-3A51-4077-A25A-7726D3D3D711}"_uid;

    // Slot 3. Main thread, between addHandler and removeHandler. Both texts are 8-bit and the host's. With checkOnly
    // the question is whether the command may run now: kResultOk or kResultFalse. Without, it is run: kResultOk means
    // that it counts as handled.
    virtual FResult checkOrExecute(const char* category, const char* name, bool checkOnly) = 0;

protected:
    ~ICommandHandler() = default;
};

} // namespace tessera
