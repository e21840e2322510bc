// The host's services, as this module finds them: one process-wide pointer, set when the service is initialised, and a
// look-up at each use. Whoever sets the pointer sees to it that it stays valid. A service that the host lacks is null,
// which every user passes over. Main thread.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "shell/hostapi/IHostServices.h"

namespace tessera {

IHostServices* hostServices();
void setHostServices(IHostServices* services);

// The service T with one reference, or null. Some services give a new object at each call.
template <class T>
FRefPtr<T> queryService(IHostServices* services = hostServices()) {
    FRefPtr<T> service;
    if (services != nullptr && services->queryService(T::iid, service.receive()) != kResultOk) {
        static_cast<void>(service.detach());
    }
    return service;
}

} // namespace tessera
