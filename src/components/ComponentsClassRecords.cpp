// The class records of the components, in the order in which they are entered.
#include "components/FCompiledInComponentDescription.h"
#include "components/FModule.h"
#include "components/FPluginComponent.h"
#include "components/FServiceManager.h"

namespace tessera {

FMetaClass FModuleBase::metaClass("FModuleBase", &CmObject::metaClass, &createCmObject<FModuleBase>);
FMetaClass FModule::metaClass("FModule", &FModuleBase::metaClass, &createCmObject<FModule>);
FMetaClass FModuleManager::metaClass("FModuleManager", &CmObject::metaClass, nullptr);
FMetaClass FComponentRegistry::metaClass("FComponentRegistry", &FModuleManager::metaClass, nullptr);
FMetaClass FComponentDescription::metaClass("FComponentDescription", &CmObject::metaClass, nullptr);
FMetaClass FPluginComponent::metaClass("FPluginComponent", &FComponentDescription::metaClass, nullptr);
FMetaClass FCompiledInComponentDescription::metaClass("FCompiledInComponentDescription",
                                                      &FComponentDescription::metaClass, nullptr);
FMetaClass FPluginWrapper::metaClass("FPluginWrapper", &CmObject::metaClass, nullptr);
FMetaClass FServiceManager::metaClass("FServiceManager", &CmObject::metaClass, nullptr);

namespace {

// Null as long as the program has made no registry.
void* shareComponentRegistry() {
    FComponentRegistry* registry = FComponentRegistry::getInstance();
    if (registry == nullptr) {
        return nullptr;
    }
    registry->addRef();
    return static_cast<IComponentSource*>(registry);
}

const FMetaClass componentSourceRecord(nullptr, nullptr, &shareComponentRegistry, IComponentSource::iid);

} // namespace
} // namespace tessera
