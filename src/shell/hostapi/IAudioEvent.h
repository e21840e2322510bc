// IAudioEvent: an object of a project that plays audio.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IAudioPart;

struct IAudioEvent : IBaseUnknown {
    static constexpr FUIDBytes iid = "{21FFE452-D832-40D6-AE8B-6DB6AE400165}"_uid;

    // Slot 3. Main thread. What it plays, which stays the event's; null if nothing.
    virtual IAudioPart* audioPart() = 0;

    // Slot 4. Main thread. Lets it play another part, which the event holds with a reference of its own. The other
    // words are always 0. Anything but kResultOk: nothing changed.
    virtual FResult setAudioPart(std::int64_t unused1, IAudioPart* part, std::int64_t unused2) = 0;

protected:
    ~IAudioEvent() = default;
};

} // namespace tessera
