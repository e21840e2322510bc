// IUndoTarget: takes steps of a guest into the open undo block. Asked of IUndoStack.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IUndoStep;

struct IUndoTarget : IBaseUnknown {
    static constexpr FUIDBytes iid = "{7199C83A-68C9-40BF-9F14-2DCDFF1A1CB3}"_uid;

    virtual void reserved3() = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual void reserved6() = 0;
    virtual void reserved7() = 0;
    virtual void reserved8() = 0;
    virtual void reserved9() = 0;
    virtual void reserved10() = 0;
    virtual void reserved11() = 0;
    virtual void reserved12() = 0;

    // Slot 13. Main thread. The host holds a reference for as long as the block stands in its history.
    virtual FResult addStep(IUndoStep* step) = 0;

protected:
    ~IUndoTarget() = default;
};

} // namespace tessera
