// IProjectListener: told by a project of a change of its content. Implemented by the module, given to IProject.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IProject;

struct IProjectListener : IBaseUnknown {
    // Slot 3. Main thread, between addProjectListener and removeProjectListener.
    virtual void projectChanged(IProject* project) = 0;

protected:
    ~IProjectListener() = default;
};

} // namespace tessera
