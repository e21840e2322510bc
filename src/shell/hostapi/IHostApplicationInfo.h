// IHostApplicationInfo: who the host is. Asked of the host's context. Both texts are 8-bit, zero-terminated and the
// host's, valid as long as the context is.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IHostApplicationInfo : IBaseUnknown {
    static constexpr FUIDBytes iid = "{A8E1A52A-8E24-416A-B959-21742443FB74}"_uid;

    // Slot 3. Main thread, from initialize to terminate. For instance "Harrow Max".
    virtual const char* name() = 0;

    // Slot 4. Main thread, from initialize to terminate. Four numbers with dots between, words around them are
    // allowed.
    virtual const char* version() = 0;

protected:
    ~IHostApplicationInfo() = default;
};

} // namespace tessera
