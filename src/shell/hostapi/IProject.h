// IProject: one open project. What its operations give stays the host's, and lives as long as the project is open. It
// may offer IProjectObject.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IHostFile;
struct IPool;
struct IProjectListener;
struct IProjectObject;
struct IProjectTimeline;

struct IProject : IBaseUnknown {
    virtual void reserved3() = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual void reserved6() = 0;
    virtual void reserved7() = 0;
    virtual void reserved8() = 0;

    // Slot 9. Main thread. The project's folder; null if there is none.
    virtual IHostFile* folder() = 0;

    // Slot 10. Main thread. The file that it is saved in; null before the first save.
    virtual IHostFile* file() = 0;

    // Slot 11. Main thread. The audio that belongs to the project.
    virtual IPool* pool() = 0;

    // Slot 12. Main thread. The root of its tree; another object after a change of the root.
    virtual IProjectTimeline* root() = 0;

    virtual void reserved13() = 0;
    virtual void reserved14() = 0;
    virtual void reserved15() = 0;

    // Slot 16. Main thread. Seconds on the timeline of an event, also of one that was taken off its track last.
    virtual double positionOf(IProjectObject* event) = 0;

    virtual void reserved17() = 0;
    virtual void reserved18() = 0;

    // Slot 19. Main thread. The host holds no reference: a listener that goes away removes itself first.
    virtual FResult addProjectListener(IProjectListener* listener) = 0;

    // Slot 20. Main thread. kResultFalse for a listener that was never added.
    virtual FResult removeProjectListener(IProjectListener* listener) = 0;

protected:
    ~IProject() = default;
};

} // namespace tessera
