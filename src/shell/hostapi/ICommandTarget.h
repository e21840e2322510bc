// ICommandTarget: connects commands with their handlers.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct ICommandHandler;

struct ICommandTarget : IBaseUnknown {
    static constexpr FUIDBytes iid = "{762F3F61-11D1-4115-92F9-7AC6F239460F}"_uid;

    // Slot 3. Main thread. Lets the command be chosen, as far as its handler allows. kResultFalse for a command that
    // is not in the table.
    virtual FResult enableCommand(const char* category, const char* name) = 0;

    virtual void reserved4() = 0;

    // Slot 5. Main thread. The host holds one reference until removeHandler. Anything but kResultOk is a refusal.
    virtual FResult addHandler(ICommandHandler* handler) = 0;

    // Slot 6. Main thread. kResultFalse for a handler that was never added.
    virtual FResult removeHandler(ICommandHandler* handler) = 0;

protected:
    ~ICommandTarget() = default;
};

} // namespace tessera
