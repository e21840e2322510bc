// IProjectTimeline: the root of a project, which knows the times of its items by their identifiers.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IProjectTimeline : IBaseUnknown {
    virtual void reserved3() = 0;
    virtual void reserved4() = 0;

    // Slot 5. Main thread. Seconds; *start stays as it is for an unknown item.
    virtual void itemStart(std::uint32_t itemId, double* start) = 0;

    virtual void reserved6() = 0;
    virtual void reserved7() = 0;
    virtual void reserved8() = 0;

    // Slot 9. Main thread. Seconds; both stay as they are for an unknown item.
    virtual void itemRange(std::uint32_t itemId, double* start, double* end) = 0;

protected:
    ~IProjectTimeline() = default;
};

} // namespace tessera
