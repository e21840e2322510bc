// IMediaAttributes: the identity of a media item. Asked of an IMediaObject.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IMediaAttributes : IBaseUnknown {
    static constexpr FUIDBytes iid = "{0499AB46-4C5F-463D-9BAF-00E704B52D35}"_uid;

    // Slot 3. Main thread. The item's identifier on its timeline.
    virtual std::uint32_t itemId() = 0;

protected:
    ~IMediaAttributes() = default;
};

} // namespace tessera
