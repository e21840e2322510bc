#include "components/FServiceManager.h"

#include "components/HostContext.h"
#include "foundation/object/FSingletonList.h"
#include "shell/hostapi/IPlugin.h"
#include "shell/hostapi/ModuleExports.h"

#include <algorithm>
#include <utility>

namespace tessera {
namespace {

IPlugin* pluginOf(const FPluginWrapper& wrapper) {
    return static_cast<IPlugin*>(wrapper.getInstance());
}

} // namespace

FServiceManager* FServiceManager::getInstance(bool create) {
    static constinit FSingleton<FServiceManager> instance([] { return new FServiceManager(Categories::services); });
    return instance.get(create);
}

FServiceManager::FServiceManager(Categories categories) {
    if (categories == Categories::services) {
        addCategory(kServiceCategory, nullptr);
    }
}

FServiceManager::~FServiceManager() {
    stop();
}

void FServiceManager::addCategory(const FStringRef& name, FComponentRegistry* registry) {
    for (Category& category : categories_) {
        if (category.name == name) {
            category.registry = registry;
            return;
        }
    }
    categories_.push_back({FString(name), FRefPtr<FComponentRegistry>(registry)});
}

bool FServiceManager::isRunning(const FComponentDescription& component) const {
    return std::any_of(running_.begin(), running_.end(),
                       [&](const auto& wrapper) { return wrapper->getComponent() == &component; });
}

bool FServiceManager::startComponent(FComponentDescription& component) {
    const auto wrapper = FRefPtr<FPluginWrapper>::adopt(FPluginWrapper::create(component));
    if (!wrapper || pluginOf(*wrapper)->initialize(getHostContext()) != kResultOk) {
        return false;
    }
    running_.push_back(wrapper);
    return true;
}

std::int32_t FServiceManager::start() {
    std::int32_t started = 0;
    // What is started may name further categories.
    for (std::size_t i = 0; i < categories_.size(); ++i) {
        const Category category = categories_[i];
        FComponentRegistry* registry = category.registry ? category.registry.get() : FComponentRegistry::getInstance();
        FComponentRegistry::Components components;
        if (registry == nullptr || !registry->getCategory(category.name, components)) {
            continue;
        }
        for (const auto& component : components) {
            if (!component->isAvailable() || isRunning(*component)) {
                continue;
            }
            if (startComponent(*component)) {
                ++started;
            } else {
                component->setAvailable(false);
            }
        }
    }
    return started;
}

void FServiceManager::stop() {
    auto running = std::exchange(running_, {});
    for (auto& wrapper : running) {
        pluginOf(*wrapper)->terminate();
        wrapper.reset();
    }
}

IBaseUnknown* FServiceManager::getRunning(std::int32_t index) const {
    return index >= 0 && index < getRunningCount() ? running_[static_cast<std::size_t>(index)]->getInstance() : nullptr;
}

} // namespace tessera
