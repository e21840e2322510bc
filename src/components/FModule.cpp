#include "components/FModule.h"

#include "components/HostContext.h"
#include "foundation/threads/FLockGuard.h"
#include "shell/hostapi/IModuleFactory3.h"
#include "shell/hostapi/ModuleExports.h"

namespace tessera {

static_assert(FModule::kUsableUnloaded == FactoryInfo::kHasWideRecords);

FModule::~FModule() {
    endModule();
}

IModuleFactory* FModule::getFactory(bool loadIfNeeded) {
    FLockGuard guard(getLock());
    if (!factory_ && loadIfNeeded) {
        load();
    }
    return factory_.get();
}

void FModule::setInfo(const FactoryInfo& info) {
    info_ = info;
    if ((info.flags & kStayLoadedOnceKnown) != 0) {
        setStaysLoaded(true);
    }
}

bool FModule::onLoaded() {
    const auto getPluginFactory = reinterpret_cast<GetPluginFactoryFunction>(getSymbol(kGetPluginFactoryName));
    if (getPluginFactory == nullptr) {
        return false;
    }
    factory_ = FRefPtr<IModuleFactory>::adopt(getPluginFactory());
    if (!factory_) {
        return false;
    }
    const auto factory3 = queryFor<IModuleFactory3>(factory_.get());
    if (factory3 && getHostContext() != nullptr) {
        factory3->attachHost(getHostContext());
    }
    return true;
}

void FModule::onUnloading() {
    factory_.reset();
}

} // namespace tessera
