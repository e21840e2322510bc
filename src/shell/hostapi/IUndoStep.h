// IUndoStep: a step that the module enters in an undo block of the host. Implemented by the module; the host keeps a
// reference for as long as the block stands in its history.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IUndoStep : IBaseUnknown {
    static constexpr FUIDBytes iid = "{AC4023C3-7575-4B3C-BF81-70138CBD8C05}"_uid;

    // Slot 3. Main thread. Once, when the block is committed. Always kResultOk.
    virtual FResult perform() = 0;

    // Slot 4. Main thread, after perform or redo. Always kResultOk.
    virtual FResult undo() = 0;

    // Slot 5. Main thread, after undo. Always kResultOk.
    virtual FResult redo() = 0;

protected:
    ~IUndoStep() = default;
};

} // namespace tessera
