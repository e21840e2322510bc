#include "components/FPluginWrapper.h"

namespace tessera {

FPluginWrapper* FPluginWrapper::create(FComponentDescription& component) {
    IBaseUnknown* instance = component.createInstance();
    return instance != nullptr ? new FPluginWrapper(component, instance) : nullptr;
}

} // namespace tessera
