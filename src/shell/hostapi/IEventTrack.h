// IEventTrack: a track that events stand on. It is known by its identity alone.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IEventTrack : IBaseUnknown {
    static constexpr FUIDBytes iid = "{1A3A5B5E-AC16-424B-8AA2-2069FFE3F0A9}"_uid;

protected:
    ~IEventTrack() = default;
};

} // namespace tessera
