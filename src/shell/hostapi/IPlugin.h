// IPlugin: the module's object as the host drives it. It has no identifier of its own: IModuleFactory.createObject
// with the identifier of IBaseUnknown gives this table. Implemented by the module, called on the host's main thread.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IPlugin : IBaseUnknown {
    // Slot 3. Main thread, once per life or again after terminate. The context stays the host's and must outlive
    // terminate; no reference is taken. kResultFalse: this host is not admitted, and the object stays inert.
    virtual FResult initialize(IBaseUnknown* hostContext) = 0;

    // Slot 4. Main thread. After it no host object is called any more; on an object that is not initialised nothing
    // happens. Always kResultOk.
    virtual FResult terminate() = 0;

protected:
    ~IPlugin() = default;
};

} // namespace tessera
