// FServiceManager: starts the classes of the category "Service", and of others that are named to it, and stops them.
//
// Objects of these classes are driven through IPlugin, which is the table that they give for IBaseUnknown: started with
// the program's host context (see HostContext), stopped by terminate. A class that can't be created, or that refuses
// the context, is marked unavailable. Services run until stop, or until the manager goes; the registry and the host
// context outlive them. Main thread.
#pragma once

#include "components/FComponentRegistry.h"
#include "components/FPluginWrapper.h"

#include <vector>

namespace tessera {

class FServiceManager : public CmClass<FServiceManager, CmObject> {
public:
    static FMetaClass metaClass;

    enum class Categories { none, services };

    // The process's, with the category "Service", made on first use. Borrowed. Null at the end of the process.
    static FServiceManager* getInstance(bool create);

    explicit FServiceManager(Categories categories = Categories::none);
    FServiceManager(const FServiceManager&) = delete;
    FServiceManager& operator=(const FServiceManager&) = delete;
    ~FServiceManager() override;

    // The registry is shared; null stands for the process's, whichever that is at the start. For a category that is
    // there already, only the registry changes.
    void addCategory(const FStringRef& name, FComponentRegistry* registry);
    // Starts what is available and doesn't run yet, category by category. Gives how many were started.
    std::int32_t start();
    // In the order in which they were started.
    void stop();

    std::int32_t getRunningCount() const { return static_cast<std::int32_t>(running_.size()); }
    // Borrowed; null for a bad index.
    IBaseUnknown* getRunning(std::int32_t index) const;

private:
    struct Category {
        FString name;
        FRefPtr<FComponentRegistry> registry;
    };

    bool startComponent(FComponentDescription& component);
    bool isRunning(const FComponentDescription& component) const;

    std::vector<Category> categories_;
    // Each holds its component, too.
    std::vector<FRefPtr<FPluginWrapper>> running_;
};

} // namespace tessera
