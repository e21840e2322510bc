// ITimeValue: a parameter of the transport that is a time.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct ITimeValue : IBaseUnknown {
    static constexpr FUIDBytes iid = "{938CFD58-0866-4BEB-AA58-09F39B4D4596}"_uid;

    // Slot 3. Main thread. Sets the time; notify is always 1, so that the host shows the change.
    virtual FResult setValue(double seconds, std::int32_t notify) = 0;

protected:
    ~ITimeValue() = default;
};

} // namespace tessera
