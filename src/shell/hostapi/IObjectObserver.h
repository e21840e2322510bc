// IObjectObserver: told by the host's object registry about an object that it was added for. Implemented by the
// module; it answers IBaseUnknown, so that IObjectTest can tell it from others.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IObjectObserver : IBaseUnknown {
    // Slot 3. Main thread, between addObserver and removeObserver. Code 1: the subject has changed.
    virtual void update(IBaseUnknown* subject, std::int32_t code) = 0;

protected:
    ~IObjectObserver() = default;
};

} // namespace tessera
