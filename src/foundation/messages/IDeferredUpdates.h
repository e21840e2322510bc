// IDeferredUpdates: the queue of changes that are to be told later; the second interface of UpdateHandler.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IDeferredUpdates : IBaseUnknown {
    static constexpr FUIDBytes iid = "{030B780C-D6E6-418D-8CE0-0BC209C834D4}"_uid;

    // Takes all changes of the object off the queue, untold.
    virtual FResult cancelUpdates(IBaseUnknown* object) = 0;
    // Tells the queued changes of the object, of all objects for null. What belongs to an object that is being notified
    // right now stays queued for the next round.
    virtual FResult triggerDeferred(IBaseUnknown* object) = 0;

protected:
    ~IDeferredUpdates() = default;
};

} // namespace tessera
