#include "components/FServiceManager.h"

#include "appservices/defaults/FDefaultPool.h"
#include "components/ComponentDoubles.h"
#include "components/FCompiledInComponentDescription.h"
#include "components/HostContext.h"
#include "components/ModuleLog.h"
#include "shell/hostapi/IPlugin.h"
#include "support/ForeignObject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::classInfo;
using testing::ElementsAre;
using testing::IsEmpty;

// A service of the program itself.
class OwnService : public test::ForeignObject<IPlugin> {
public:
    FResult queryInterface(const FUIDBytes&, void** out) override {
        *out = nullptr;
        return kNoInterface;
    }
    FResult initialize(IBaseUnknown* context) override {
        seenContext = context;
        ++starts;
        return result;
    }
    FResult terminate() override {
        ++stops;
        return kResultOk;
    }
    FResult result = kResultOk;
    IBaseUnknown* seenContext = nullptr;
    int starts = 0;
    int stops = 0;
};

OwnService* ownService = nullptr;

IBaseUnknown* shareOwnService() {
    if (ownService != nullptr) {
        ownService->addRef();
    }
    return ownService;
}

class FServiceManagerTest : public testing::Test {
protected:
    FServiceManagerTest() {
        registry_->setDefaults(pool_.get());
        setHostContext(&context_);
        ownService = &service_;
    }
    ~FServiceManagerTest() override {
        setHostContext(nullptr);
        ownService = nullptr;
    }
    FComponentDescription* add(FComponentRegistry& registry, std::uint8_t number, const char* category) {
        const auto component = FRefPtr<FComponentDescription>::adopt(
            new FCompiledInComponentDescription(classInfo(number, category, "Own"), &shareOwnService));
        registry.addComponent(component.get());
        return component.get();
    }
    void scan(const char* module) {
        const auto folder = test::nativePath(TEST_MODULES, PathKind::folder);
        const auto file = test::nativePath(std::string(TEST_MODULES) + "/" + module + ".shlb");
        ASSERT_EQ(registry_->scanFolder(*folder, file.get()), 1);
        log_.forget();
    }

    test::ModuleLog log_;
    test::ForeignObject<> context_;
    OwnService service_;
    FRefPtr<FDefaultPool> pool_ = FRefPtr<FDefaultPool>::adopt(new FDefaultPool);
    FRefPtr<FComponentRegistry> registry_ = FRefPtr<FComponentRegistry>::adopt(new FComponentRegistry);
    FServiceManager services_{FServiceManager::Categories::services};
};

TEST_F(FServiceManagerTest, StartsAndStopsTheServiceOfAModule) {
    scan("service");
    EXPECT_EQ(services_.start(), 1);
    EXPECT_EQ(services_.getRunningCount(), 1);
    EXPECT_NE(services_.getRunning(0), nullptr);
    EXPECT_EQ(services_.getRunning(1), nullptr);
    EXPECT_EQ(services_.getRunning(-1), nullptr);
    EXPECT_THAT(log_.lines(), ElementsAre("service loaded", "service attached", "service initialize"));
    log_.forget();
    FModuleBase::setDeferredUnloading(false);
    services_.stop();
    FModuleBase::setDeferredUnloading(true);
    EXPECT_EQ(services_.getRunningCount(), 0);
    EXPECT_THAT(log_.lines(),
                ElementsAre("service terminate", "service object gone", "service factory gone", "service unloaded"));
}

TEST_F(FServiceManagerTest, AClassThatRefusesTheHostIsMarkedUnavailable) {
    scan("refusing_service");
    EXPECT_EQ(services_.start(), 0);
    EXPECT_EQ(services_.getRunningCount(), 0);
    EXPECT_FALSE(registry_->getComponent(test::moduleClass(15))->isAvailable());
    log_.forget();
    EXPECT_EQ(services_.start(), 0);
    EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(FServiceManagerTest, AClassWithoutObjectsIsMarkedUnavailable) {
    FComponentDescription* component = add(*registry_, 1, "Service");
    ownService = nullptr;
    EXPECT_EQ(services_.start(), 0);
    EXPECT_FALSE(component->isAvailable());
}

TEST_F(FServiceManagerTest, StartsAvailableClassesThatDoNotRun) {
    FComponentDescription* component = add(*registry_, 1, "Service");
    component->setAvailable(false);
    EXPECT_EQ(services_.start(), 0);
    component->setAvailable(true);
    EXPECT_EQ(services_.start(), 1);
    EXPECT_EQ(services_.start(), 0);
    EXPECT_EQ(service_.starts, 1);
    EXPECT_EQ(service_.seenContext, &context_);
    services_.stop();
    EXPECT_EQ(service_.stops, 1);
    EXPECT_EQ(service_.references, 1u);
    EXPECT_EQ(services_.start(), 1);
}

TEST_F(FServiceManagerTest, StartsAndStopsInTheOrderOfTheCategories) {
    scan("remembered");
    scan("service");
    services_.addCategory("Test", nullptr);
    services_.addCategory("Service", registry_.get()); // stays the first
    EXPECT_EQ(services_.start(), 2);
    services_.stop();
    std::vector<std::string> lines = log_.lines();
    std::erase_if(
        lines, [](const std::string& line) { return !line.ends_with("initialize") && !line.ends_with("terminate"); });
    EXPECT_THAT(
        lines, ElementsAre("service initialize", "remembered initialize", "service terminate", "remembered terminate"));
}

TEST_F(FServiceManagerTest, StopsWhatStillRunsWhenItGoes) {
    add(*registry_, 1, "Service");
    {
        FServiceManager services(FServiceManager::Categories::services);
        EXPECT_EQ(services.start(), 1);
    }
    EXPECT_EQ(service_.stops, 1);
    EXPECT_EQ(service_.references, 1u);
}

TEST_F(FServiceManagerTest, WithoutCategoriesStartsNothing) {
    add(*registry_, 1, "Service");
    FServiceManager services;
    EXPECT_EQ(services.start(), 0);
    services.addCategory("Service", nullptr);
    EXPECT_EQ(services.start(), 1);
}

TEST_F(FServiceManagerTest, ACategoryMayHaveARegistryOfItsOwn) {
    const auto other = FRefPtr<FComponentRegistry>::adopt(new FComponentRegistry);
    other->setDefaults(pool_.get());
    add(*other, 1, "Helper");
    services_.addCategory("Helper", nullptr);
    EXPECT_EQ(services_.start(), 0);
    services_.addCategory("Helper", other.get());
    EXPECT_EQ(services_.start(), 1);
    EXPECT_EQ(other->getReferenceCount(), 2u);
}

TEST_F(FServiceManagerTest, WithoutARegistryStartsNothing) {
    registry_.reset();
    EXPECT_EQ(services_.start(), 0);
}

TEST_F(FServiceManagerTest, OneIsTheProcesss) {
    FServiceManager* services = FServiceManager::getInstance(true);
    ASSERT_NE(services, nullptr);
    EXPECT_EQ(FServiceManager::getInstance(false), services);
    add(*registry_, 1, "Service");
    EXPECT_EQ(services->start(), 1);
    services->stop();
}

} // namespace
} // namespace tessera
