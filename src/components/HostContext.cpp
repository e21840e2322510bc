#include "components/HostContext.h"

namespace tessera {
namespace {

IBaseUnknown* hostContext = nullptr;

} // namespace

void setHostContext(IBaseUnknown* context) {
    hostContext = context;
}

IBaseUnknown* getHostContext() {
    return hostContext;
}

} // namespace tessera
