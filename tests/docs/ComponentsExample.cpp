#include "appservices/defaults/FDefaultPool.h"
#include "components/ComponentDoubles.h"
#include "components/FCompiledInComponentDescription.h"
#include "components/FComponentRegistry.h"
#include "components/FPluginWrapper.h"
#include "components/FServiceManager.h"
#include "components/HostContext.h"
#include "support/ForeignObject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [components]
// The classes of all modules in a folder, as names of one category.
std::vector<FString> namesOf(FComponentRegistry& registry, const FPath& folder, const FStringRef& category) {
    registry.scanFolder(folder);
    std::vector<FString> names;
    FComponentRegistry::Components components;
    registry.getCategory(category, components);
    for (const auto& component : components) {
        names.emplace_back(component->getName());
    }
    return names;
}

// The object and the use of its module, given back together at the end of the wrapper's life. Null without one.
FRefPtr<FPluginWrapper> create(FComponentRegistry& registry, const FUIDBytes& identifier) {
    FComponentDescription* const component = registry.getComponent(identifier);
    return FRefPtr<FPluginWrapper>::adopt(component != nullptr ? FPluginWrapper::create(*component) : nullptr);
}
// [components]

// [services]
// In main: the context first, then what is started with it; stopped the other way round.
void runServices(IBaseUnknown& context, FComponentRegistry& registry, void (*runProgram)()) {
    setHostContext(&context);
    FServiceManager services(FServiceManager::Categories::none);
    services.addCategory("Service", &registry);
    services.start();
    runProgram();
    services.stop();
    setHostContext(nullptr);
}
// [services]

class ComponentsExample : public testing::Test {
protected:
    ComponentsExample() { registry_->setDefaults(pool_.get()); }

    // A pool of the test's own remembers the modules.
    FRefPtr<FDefaultPool> pool_ = FRefPtr<FDefaultPool>::adopt(new FDefaultPool);
    FRefPtr<FComponentRegistry> registry_ = FRefPtr<FComponentRegistry>::adopt(new FComponentRegistry);
    const FRefPtr<FNPath> folder_ = nativePath(TEST_MODULES, PathKind::folder);
};

TEST_F(ComponentsExample, ModulesOfAFolderAreFoundAndTheirClassesMade) {
    EXPECT_THAT(namesOf(*registry_, *folder_, "Service"), testing::ElementsAre(FString("service 0")));
    const auto object = create(*registry_, moduleClass(0x0E));
    ASSERT_TRUE(object);
    EXPECT_TRUE(registry_->getModule(0)->isLoaded());
    EXPECT_NE(object->getInstance(), nullptr);
    EXPECT_FALSE(create(*registry_, moduleClass(0x77)));
}

int runningServices = -1;

TEST_F(ComponentsExample, ServicesRunWhileTheProgramDoes) {
    registry_->scanFolder(*folder_);
    ForeignObject<> context;
    runServices(context, *registry_, [] {
        auto* module = FComponentRegistry::getInstance()->getModule(0);
        runningServices = module->getUseCount();
    });
    EXPECT_EQ(runningServices, 1);
    EXPECT_EQ(registry_->getModule(0)->getUseCount(), 0);
    EXPECT_EQ(getHostContext(), nullptr);
}

} // namespace
} // namespace tessera::test
