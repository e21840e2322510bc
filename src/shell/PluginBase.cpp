#include "shell/PluginBase.h"

#include "foundation/object/FRefPtr.h"
#include "workflow/HostServices.h"

#include <cstring>

namespace tessera {

namespace {

constexpr char kClassName[] = "PluginBase";

} // namespace

FResult PluginBase::queryInterface(const FUIDBytes& uid, void** out) {
    if (uid == IBaseUnknown::iid) {
        addReference();
        *out = static_cast<IPlugin*>(this);
        return kResultOk;
    }
    return FObject::queryInterface(uid, out);
}

const char* PluginBase::getClassName() const {
    return kClassName;
}

bool PluginBase::isTypeOf(const char* className, bool askBase) const {
    if (className != nullptr && std::strcmp(className, kClassName) == 0) {
        return true;
    }
    return askBase && FObject::isTypeOf(className, askBase);
}

FResult PluginBase::initialize(IBaseUnknown* hostContext) {
    return fetchServices(hostContext) ? onInitialize() : kResultFalse;
}

bool PluginBase::fetchServices(IBaseUnknown* hostContext) {
    auto services = queryFor<IHostServices>(hostContext);
    if (services != hostServices()) {
        // The reference stays with the process-wide pointer, which is used for as long as anything of ours lives.
        setHostServices(services.detach());
    }
    return hostServices() != nullptr;
}

} // namespace tessera
