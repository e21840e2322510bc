// IProjectList: the projects that are open in the host.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IProjectListListener;

struct IProjectList : IBaseUnknown {
    static constexpr FUIDBytes iid = "{3D7C2813-8ABF-4AAE-A23A-11BF37214C36}"_uid;

    virtual void reserved3() = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;

    // Slot 6. Main thread. The host holds no reference: a listener that goes away removes itself first.
    virtual FResult addListener(IProjectListListener* listener) = 0;

    // Slot 7. Main thread. kResultFalse for a listener that was never added.
    virtual FResult removeListener(IProjectListListener* listener) = 0;

protected:
    ~IProjectList() = default;
};

} // namespace tessera
