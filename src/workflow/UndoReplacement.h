// UndoReplacement: the module's own step in the host's undo block. It changes nothing in the project; it keeps the
// session on the event that stands there, whichever way the host moves through its history.
//
// It holds both events: the host's history may be all that keeps the other one alive. Main thread.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "shell/hostapi/IProjectObject.h"
#include "shell/hostapi/IUndoStep.h"
#include "workflow/HostGuest.h"

#include <functional>

namespace tessera {

class UndoReplacement final : public HostGuest<IUndoStep> {
public:
    using Replaced = std::function<void(IProjectObject*)>;

    // replaced is called with the event that stands in the project from now on; it may be called until the host drops
    // the step.
    UndoReplacement(IProjectObject* newEvent, IProjectObject* oldEvent, Replaced replaced);

    FResult perform() override { return tell(newEvent_.get()); }
    FResult undo() override { return tell(oldEvent_.get()); }
    FResult redo() override { return tell(newEvent_.get()); }

private:
    FResult tell(IProjectObject* event);

    FRefPtr<IProjectObject> newEvent_;
    FRefPtr<IProjectObject> oldEvent_;
    Replaced replaced_;
};

} // namespace tessera
