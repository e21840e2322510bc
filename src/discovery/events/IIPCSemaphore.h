// IIPCSemaphore: a signal with a name that all processes of one user share. It carries no data and doesn't count:
// several signals before a wait are one. Objects come from the class registry, by the identifier.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IIPCSemaphore : IBaseUnknown {
    static constexpr FUIDBytes iid = "{20D444BC-9924-4483-A7B6-35199221D1AC}"_uid;

    // Makes the event of this name or joins the existing one: kResultOk or kResultFalse. On failure there is no event.
    virtual FResult create(const char* name) = 0;
    // Any thread, also while another one waits. False when there is no event.
    virtual bool signal() = 0;
    // Blocks until there is a signal, and takes it: the only way out. False, at once, when there is no event. Meant
    // for one listener per name: where two wait, one signal reaches one of them.
    virtual bool wait() = 0;

protected:
    ~IIPCSemaphore() = default;
};

} // namespace tessera
