// IMediaItemList: a list of media items with a selection.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IMediaObject;

struct IMediaItemList : IBaseUnknown {
    virtual void reserved3() = 0;
    virtual void reserved4() = 0;

    // Slot 5. Main thread.
    virtual std::int32_t count() = 0;

    // Slot 6. Main thread. The item, which stays the list's; null for an index out of range.
    virtual IMediaObject* item(std::int32_t index) = 0;

    // Slot 7. Main thread. False for an index out of range.
    virtual bool isSelected(std::int32_t index) = 0;

protected:
    ~IMediaItemList() = default;
};

} // namespace tessera
