// IAlertHost: shows a message to the user.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IAlertHost : IBaseUnknown {
    static constexpr FUIDBytes iid = "{37BDB6A1-65FB-4994-9886-04549461A2BB}"_uid;

    // Slot 3. Main thread. Modal: returns when the user has closed it, with the number of the button. The texts are
    // zero-terminated and the caller's; the last two words are always 0.
    virtual std::int32_t show(const char16_t* message, const char16_t* button, std::int64_t unused1,
                              std::int64_t unused2) = 0;

protected:
    ~IAlertHost() = default;
};

} // namespace tessera
