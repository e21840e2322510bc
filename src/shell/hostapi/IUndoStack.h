// IUndoStack: the host's undo history. Changes collect in an open block until commit closes it; the host itself
// undoes and redoes them. It offers IUndoTarget.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IEventTrack;
struct IProject;
struct IProjectObject;

struct IUndoStack : IBaseUnknown {
    static constexpr FUIDBytes iid = "{3F322518-90F4-462A-B9E9-535C454C265E}"_uid;

    virtual void reserved3() = 0;

    // Slot 4. Main thread. Closes the block under a name for the menu, UTF-8. The steps of the block are performed
    // now.
    virtual FResult commit(IProject* project, const char* name) = 0;

    // Slot 5. Main thread. Puts the event on the track. Anything but kResultOk: nothing changed.
    virtual FResult addEvent(IEventTrack* track, IProjectObject* event) = 0;

    // Slot 6. Main thread. Takes the event off the track. Anything but kResultOk: nothing changed.
    virtual FResult removeEvent(IEventTrack* track, IProjectObject* event) = 0;

protected:
    ~IUndoStack() = default;
};

} // namespace tessera
