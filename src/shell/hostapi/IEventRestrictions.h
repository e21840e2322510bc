// IEventRestrictions: tells a plain audio event from one that holds processing. Asked of ISelection. Each predicate
// takes the event and gives a byte, not 0 for yes; which kind of processing each one stands for is the host's matter.
// They are asked in the order 8, 5, 3, 4.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IProjectObject;

struct IEventRestrictions : IBaseUnknown {
    static constexpr FUIDBytes iid = "{E5E6482F-701F-964D-AF5E-795762CDFEE4}"_uid;

    // Slot 3. Main thread.
    virtual std::uint8_t restriction3(IProjectObject* event) = 0;

    // Slot 4. Main thread.
    virtual std::uint8_t restriction4(IProjectObject* event) = 0;

    // Slot 5. Main thread.
    virtual std::uint8_t restriction5(IProjectObject* event) = 0;

    virtual void reserved6() = 0;
    virtual void reserved7() = 0;

    // Slot 8. Main thread.
    virtual std::uint8_t restriction8(IProjectObject* event) = 0;

protected:
    ~IEventRestrictions() = default;
};

} // namespace tessera
