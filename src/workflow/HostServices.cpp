#include "workflow/HostServices.h"

namespace tessera {

namespace {

IHostServices* services = nullptr;

} // namespace

IHostServices* hostServices() {
    return services;
}

void setHostServices(IHostServices* newServices) {
    services = newServices;
}

} // namespace tessera
