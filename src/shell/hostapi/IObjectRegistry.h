// IObjectRegistry: notifies observers about objects of the host.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IObjectObserver;

struct IObjectRegistry : IBaseUnknown {
    static constexpr FUIDBytes iid = "{F5246D56-8654-4D60-B026-AFB57B697B37}"_uid;

    // Slot 3. Main thread. The host holds no reference to the observer: one that goes away removes itself first.
    virtual FResult addObserver(IBaseUnknown* object, IObjectObserver* observer) = 0;

    // Slot 4. Main thread. kResultFalse for a pair that was never added.
    virtual FResult removeObserver(IBaseUnknown* object, IObjectObserver* observer) = 0;

protected:
    ~IObjectRegistry() = default;
};

} // namespace tessera
