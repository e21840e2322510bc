// IEventOwner: what the events of a project belong to, above their tracks.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IEventTrack;

struct IEventOwner : IBaseUnknown {
    static constexpr FUIDBytes iid = "{5354D6AC-C0D4-4532-B1BD-A33E229B9F3D}"_uid;

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
    virtual void reserved13() = 0;
    virtual void reserved14() = 0;
    virtual void reserved15() = 0;

    // Slot 16. Main thread. The track that IUndoStack wants for events of the given one, which stays the host's; null
    // for a foreign one.
    virtual IEventTrack* trackOf(IEventTrack* eventTrack) = 0;

protected:
    ~IEventOwner() = default;
};

} // namespace tessera
