// IProjectListListener: told by the host which project becomes active. Implemented by the module, given to
// IProjectList. A listener that joins while a project is active is told of it at once.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IProject;

struct IProjectListListener : IBaseUnknown {
    // Slot 3. Main thread. The project stays the host's and is valid until one of the other two operations has
    // returned.
    virtual void activated(IProject* project) = 0;

    // Slot 4. Main thread. The active project, whichever it is, stops being active.
    virtual void deactivated() = 0;

    // Slot 5. Main thread. This project stops being active; if another one is active, nothing changes.
    virtual void projectDeactivated(IProject* project) = 0;

protected:
    ~IProjectListListener() = default;
};

} // namespace tessera
