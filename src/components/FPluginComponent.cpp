#include "components/FPluginComponent.h"

namespace tessera {

IBaseUnknown* FPluginComponent::createInstance() {
    module_->use();
    IModuleFactory* factory = module_->getFactory(true);
    FRefPtr<IBaseUnknown> instance;
    if (factory != nullptr &&
        factory->createObject(getInfo().classId, IBaseUnknown::iid, instance.receive()) == kResultOk && instance &&
        instances_.add(instance.get())) {
        return instance.detach();
    }
    // The object before the code that it runs on.
    instance.reset();
    module_->unuse();
    return nullptr;
}

bool FPluginComponent::releaseInstance(IBaseUnknown* instance) {
    if (!instances_.remove(instance)) {
        return false;
    }
    instance->release();
    module_->unuse();
    return true;
}

} // namespace tessera
