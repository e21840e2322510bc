#include "components/FComponentRegistry.h"

#include "appservices/defaults/FDefaultPool.h"
#include "components/ComponentDoubles.h"
#include "components/FCompiledInComponentDescription.h"
#include "components/FPluginComponent.h"
#include "components/FPluginWrapper.h"
#include "components/ModuleLog.h"
#include "foundation/messages/UpdateHandler.h"
#include "foundation/object/ClassFactory.h"
#include "support/ClassRecords.h"
#include "support/ForeignObject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::classInfo;
using test::moduleClass;
using testing::ElementsAre;
using testing::IsEmpty;

test::ForeignObject<>* compiledIn = nullptr;

IBaseUnknown* makeCompiledIn() {
    compiledIn->addRef();
    return compiledIn;
}

class FComponentRegistryTest : public testing::Test {
protected:
    FComponentRegistryTest() { registry_->setDefaults(pool_.get()); }

    bool add(const ClassInfoWide& info) {
        const auto component =
            FRefPtr<FComponentDescription>::adopt(new FCompiledInComponentDescription(info, &makeCompiledIn));
        return registry_->addComponent(component.get());
    }
    bool isAvailable(std::uint8_t number) {
        return registry_->getComponent(classInfo(number, "", "").classId)->isAvailable();
    }
    FPluginComponent* addPlugin(std::uint8_t number, const char* module) {
        const auto path = test::nativePath(std::string(TEST_MODULES) + "/" + module + ".shlb");
        const auto own = FRefPtr<FModule>::adopt(new FModule(path.get()));
        ClassInfoWide info = classInfo(0, "Test", module, "1.2.3.4", "2.5.1");
        info.classId = moduleClass(number);
        const auto component = FRefPtr<FPluginComponent>::adopt(new FPluginComponent(info, *own));
        EXPECT_TRUE(registry_->addComponent(component.get()));
        return component.get();
    }

    test::ModuleLog log_;
    FRefPtr<FDefaultPool> pool_ = FRefPtr<FDefaultPool>::adopt(new FDefaultPool);
    FRefPtr<FComponentRegistry> registry_ = FRefPtr<FComponentRegistry>::adopt(new FComponentRegistry);
    test::ForeignObject<> object_;

    void SetUp() override { compiledIn = &object_; }
    void TearDown() override { compiledIn = nullptr; }
};

TEST_F(FComponentRegistryTest, TheFirstOneIsTheProcesss) {
    EXPECT_EQ(FComponentRegistry::getInstance(), registry_.get());
    {
        const auto second = FRefPtr<FComponentRegistry>::adopt(new FComponentRegistry);
        EXPECT_EQ(FComponentRegistry::getInstance(), registry_.get());
    }
    auto* source =
        static_cast<IComponentSource*>(ClassFactory::getInstance(true)->createInstance(IComponentSource::iid));
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(source, static_cast<IComponentSource*>(registry_.get()));
    EXPECT_EQ(registry_->getReferenceCount(), 2u);
    source->release();
    registry_.reset();
    EXPECT_EQ(FComponentRegistry::getInstance(), nullptr);
    EXPECT_EQ(ClassFactory::getInstance(true)->createInstance(IComponentSource::iid), nullptr);
}

TEST(ComponentClasses, HaveSoundRecords) {
    EXPECT_GE(test::expectSoundRecords(), 50);
    for (const char* name : {"FModuleManager", "FComponentRegistry", "FComponentDescription", "FPluginComponent",
                             "FCompiledInComponentDescription", "FPluginWrapper", "FServiceManager"}) {
        const FMetaClass* record = ClassFactory::getInstance(true)->findByName(name);
        ASSERT_NE(record, nullptr) << name;
        EXPECT_EQ(record->getFactory(), nullptr) << name;
    }
}

TEST_F(FComponentRegistryTest, KnowsEachClassOnce) {
    EXPECT_TRUE(add(classInfo(1, "Effect", "Echo")));
    EXPECT_FALSE(add(classInfo(1, "Other", "Other name")));
    EXPECT_FALSE(registry_->addComponent(nullptr));
    FComponentDescription* component = registry_->getComponent(classInfo(1, "", "").classId);
    ASSERT_NE(component, nullptr);
    EXPECT_TRUE(component->getCategory() == FStringRef("Effect"));
    EXPECT_TRUE(component->getName() == FStringRef("Echo"));
    EXPECT_EQ(component->getUID(), classInfo(1, "", "").classId);
    EXPECT_EQ(registry_->getComponent(classInfo(2, "", "").classId), nullptr);
}

TEST_F(FComponentRegistryTest, ListsACategoryInTheOrderOfEntering) {
    add(classInfo(3, "Effect", "Third"));
    add(classInfo(1, "Effect", "First"));
    add(classInfo(2, "Service", "Second"));
    FComponentRegistry::Components components;
    EXPECT_TRUE(registry_->getCategory("Effect", components));
    ASSERT_EQ(components.size(), 2u);
    EXPECT_TRUE(components[0]->getName() == FStringRef("Third"));
    EXPECT_TRUE(components[1]->getName() == FStringRef("First"));
    EXPECT_EQ(registry_->count("Effect"), 2);
    EXPECT_EQ(registry_->count("Service"), 1);
    EXPECT_EQ(registry_->count("None"), 0);
    EXPECT_FALSE(registry_->getCategory("None", components));
    EXPECT_TRUE(components.empty());
}

TEST_F(FComponentRegistryTest, CreatesByCategoryAndName) {
    add(classInfo(1, "Effect", "Echo"));
    IBaseUnknown* object = registry_->createInstance("Effect", "Echo");
    EXPECT_EQ(object, &object_);
    EXPECT_EQ(object_.references, 2u);
    registry_->releaseInstance(object);
    EXPECT_EQ(object_.references, 1u);
    EXPECT_EQ(registry_->createInstance("Effect", "echo"), nullptr);
    EXPECT_EQ(registry_->createInstance("None", "Echo"), nullptr);
    registry_->releaseInstance(nullptr);
}

TEST_F(FComponentRegistryTest, CreatesByIdentifier) {
    add(classInfo(1, "Effect", "Echo"));
    char digits[FUID::kTextSize];
    FUID(classInfo(1, "", "").classId).toString(digits);
    for (const FString& name : {FString(digits), FString(digits, CodePage::utf8)}) {
        EXPECT_EQ(registry_->createInstance("UID", name), &object_);
        object_.release();
    }
    for (const char* bad : {"", "0123", "{0000000100000000CC00000000000000}", "0000000100000000CC0000000000000G",
                            "0000000200000000CC00000000000000"}) {
        EXPECT_EQ(registry_->createInstance("UID", bad), nullptr) << bad;
    }
    EXPECT_EQ(registry_->createByIdentifier(classInfo(1, "", "").classId), &object_);
    object_.release();
    EXPECT_EQ(registry_->createByIdentifier(FUIDBytes{}), nullptr);
}

TEST_F(FComponentRegistryTest, CreatesForOthersByPlaceInACategory) {
    add(classInfo(1, "Effect", "Echo"));
    auto* source = static_cast<IComponentSource*>(registry_.get());
    EXPECT_EQ(source->count("Effect"), 1);
    EXPECT_EQ(source->createAt("Effect", 0), &object_);
    object_.release();
    EXPECT_EQ(source->createAt("Effect", 1), nullptr);
    EXPECT_EQ(source->createAt("Effect", -1), nullptr);
    EXPECT_EQ(source->createAt("None", 0), nullptr);
}

TEST_F(FComponentRegistryTest, AnUnavailableClassStaysSoInTheSettings) {
    add(classInfo(1, "Effect", "Echo"));
    add(classInfo(2, "Effect", "Choir"));
    EXPECT_TRUE(isAvailable(1));
    EXPECT_EQ(pool_->getGroupCount(), 0u);
    EXPECT_TRUE(registry_->setAvailable(classInfo(1, "", "").classId, false));
    EXPECT_FALSE(registry_->setAvailable(classInfo(9, "", "").classId, false));
    EXPECT_TRUE(registry_->saveAvailability("Effect"));
    EXPECT_FALSE(registry_->saveAvailability("None"));
    std::int64_t number = -1;
    char digits[FUID::kTextSize];
    FUID(classInfo(1, "", "").classId).toString(digits);
    EXPECT_TRUE(pool_->getInt("Components\\Category Effect\\Available", digits, number));
    EXPECT_EQ(number, 0);

    registry_ = FRefPtr<FComponentRegistry>::adopt(new FComponentRegistry);
    registry_->setDefaults(pool_.get());
    add(classInfo(1, "Effect", "Echo"));
    add(classInfo(2, "Effect", "Choir"));
    EXPECT_FALSE(isAvailable(1));
    EXPECT_TRUE(isAvailable(2));
}

TEST_F(FComponentRegistryTest, TellsObserversAndDependents) {
    UpdateHandler* updates = UpdateHandler::getInstance(true);
    struct Dependent : CmObject {
        void updateFrom(CmObject*, std::int32_t message) override { messages.push_back(message); }
        std::vector<std::int32_t> messages;
    } dependent;
    registry_->addDependent(&dependent);
    test::NotedComponents observer;
    registry_->addObserver(&observer);
    registry_->addObserver(nullptr);
    add(classInfo(1, "Effect", "Echo"));
    add(classInfo(1, "Effect", "Echo"));
    add(classInfo(2, "Effect", "Choir"));
    EXPECT_TRUE(registry_->removeComponent(classInfo(1, "", "").classId));
    EXPECT_FALSE(registry_->removeComponent(classInfo(1, "", "").classId));
    EXPECT_THAT(observer.events, ElementsAre("+Echo", "+Choir", "-Echo"));
    EXPECT_THAT(dependent.messages, IsEmpty());
    updates->triggerDeferred(nullptr);
    EXPECT_THAT(dependent.messages, ElementsAre(1));
    registry_->removeObserver(&observer);
    add(classInfo(3, "Effect", "Flanger"));
    EXPECT_EQ(observer.events.size(), 3u);
    registry_->removeDependent(&dependent);
}

TEST_F(FComponentRegistryTest, ObserversHearOfAClassBeforeItIsEntered) {
    struct Observer : test::NotedComponents {
        void componentAdded(FComponentDescription& description) override {
            NotedComponents::componentAdded(description);
            available = description.isAvailable();
            known = FComponentRegistry::getInstance()->getComponent(description.getUID()) != nullptr;
        }
        bool available = true;
        bool known = true;
    } observer;
    char digits[FUID::kTextSize];
    FUID(classInfo(1, "", "").classId).toString(digits);
    pool_->setInt("Components\\Category Effect\\Available", digits, 0);
    registry_->addObserver(&observer);
    add(classInfo(1, "Effect", "Echo"));
    EXPECT_THAT(observer.events, ElementsAre("+Echo"));
    EXPECT_FALSE(observer.available);
    EXPECT_FALSE(observer.known);
    registry_->removeObserver(&observer);
}

TEST_F(FComponentRegistryTest, ACategoryGoesWithItsLastClass) {
    add(classInfo(1, "Effect", "Echo"));
    registry_->removeComponent(classInfo(1, "", "").classId);
    FComponentRegistry::Components components;
    EXPECT_FALSE(registry_->getCategory("Effect", components));
    EXPECT_TRUE(add(classInfo(1, "Effect", "Echo")));
}

TEST_F(FComponentRegistryTest, ChecksVersions) {
    add(classInfo(1, "Effect", "Echo", "1.5.10.6", "2.3"));
    const FUIDBytes uid = classInfo(1, "", "").classId;
    const auto check = [&](const char* sdk, const char* version) {
        const FStringRef sdkText(sdk);
        const FStringRef versionText(version);
        return registry_->checkVersion(uid, nullptr, sdk != nullptr ? &sdkText : nullptr,
                                       version != nullptr ? &versionText : nullptr);
    };
    EXPECT_EQ(check(nullptr, nullptr), VersionCheck::tooOld);
    EXPECT_EQ(check("2.3", nullptr), VersionCheck::recentEnough);
    EXPECT_EQ(check("2.4", nullptr), VersionCheck::tooOld);
    EXPECT_EQ(check(nullptr, "1.5.10.6"), VersionCheck::recentEnough);
    EXPECT_EQ(check(nullptr, "1.5.9.99"), VersionCheck::recentEnough);
    EXPECT_EQ(check(nullptr, "1.5.10.7"), VersionCheck::tooOld);
    EXPECT_EQ(check("2.3", "1.6"), VersionCheck::tooOld);
    EXPECT_EQ(check("3", "1.5"), VersionCheck::tooOld);
    EXPECT_EQ(check("2.2.9", "1.5.10"), VersionCheck::recentEnough);
    const FStringRef any("0");
    EXPECT_EQ(registry_->checkVersion(FUIDBytes{}, nullptr, &any, &any), VersionCheck::unknownClass);
    EXPECT_EQ(static_cast<int>(VersionCheck::unknownClass), 2);
    FModule module;
    EXPECT_EQ(registry_->checkVersion(uid, &module, &any, &any), VersionCheck::unknownClass);
}

TEST_F(FComponentRegistryTest, AnObjectOfAModuleKeepsItLoaded) {
    FPluginComponent* component = addPlugin(2, "remembered");
    FModule* module = component->getModule();
    IBaseUnknown* object = registry_->createInstance("Test", "remembered");
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(module->getUseCount(), 1);
    EXPECT_EQ(component->getInstanceCount(), 1);
    IBaseUnknown* second = registry_->createByIdentifier(moduleClass(2));
    EXPECT_EQ(module->getUseCount(), 2);
    registry_->releaseInstance(object);
    EXPECT_TRUE(module->isLoaded());
    EXPECT_EQ(component->getInstanceCount(), 1);
    FModuleBase::setDeferredUnloading(false);
    registry_->releaseInstance(second);
    FModuleBase::setDeferredUnloading(true);
    EXPECT_FALSE(module->isLoaded());
    EXPECT_THAT(log_.lines(), ElementsAre("remembered loaded", "remembered object gone", "remembered object gone",
                                          "remembered factory gone", "remembered unloaded"));
}

TEST_F(FComponentRegistryTest, AnObjectThatCannotBeMadeLeavesNoUse) {
    const FPluginComponent* component = addPlugin(16, "no_objects");
    EXPECT_EQ(registry_->createInstance("Test", "no_objects"), nullptr);
    EXPECT_EQ(component->getModule()->getUseCount(), 0);
    EXPECT_EQ(component->getInstanceCount(), 0);
    const FPluginComponent* broken = addPlugin(7, "no_factory");
    EXPECT_EQ(registry_->createInstance("Test", "no_factory"), nullptr);
    EXPECT_EQ(broken->getModule()->getUseCount(), 0);
}

TEST_F(FComponentRegistryTest, AWrapperGivesItsObjectBack) {
    FPluginComponent* component = addPlugin(2, "remembered");
    {
        const auto wrapper = FRefPtr<FPluginWrapper>::adopt(FPluginWrapper::create(*component));
        ASSERT_TRUE(wrapper);
        EXPECT_NE(wrapper->getInstance(), nullptr);
        EXPECT_EQ(wrapper->getComponent(), component);
        EXPECT_EQ(component->getModule()->getUseCount(), 1);
    }
    EXPECT_EQ(component->getModule()->getUseCount(), 0);
    EXPECT_EQ(component->getInstanceCount(), 0);
    EXPECT_EQ(FPluginWrapper::create(*addPlugin(16, "no_objects")), nullptr);
}

TEST_F(FComponentRegistryTest, AClassWithObjectsIsKeptUntilTheyAreGivenBack) {
    FPluginComponent* component = addPlugin(2, "remembered");
    FPluginComponent* watched = component;
    IBaseUnknown* object = component->createInstance();
    IBaseUnknown* second = component->createInstance();
    EXPECT_TRUE(registry_->removeComponent(moduleClass(2)));
    EXPECT_EQ(registry_->getComponent(moduleClass(2)), nullptr);
    EXPECT_TRUE(watched->getModule()->isLoaded());
    registry_->releaseInstance(object);
    log_.forget();
    registry_->releaseInstance(second);
    // With the last object go class, module and library.
    EXPECT_THAT(log_.lines(), ElementsAre("remembered object gone", "remembered factory gone", "remembered unloaded"));
}

TEST_F(FComponentRegistryTest, KeepsModulesLoadedOnDemand) {
    const FPluginComponent* component = addPlugin(2, "remembered");
    add(classInfo(1, "Effect", "Echo"));
    EXPECT_TRUE(registry_->setStayLoaded(moduleClass(2), true));
    EXPECT_EQ(component->getModule()->getFlags(), 1u);
    EXPECT_TRUE(registry_->setStayLoaded(moduleClass(2), false));
    EXPECT_EQ(component->getModule()->getFlags(), 0u);
    EXPECT_FALSE(registry_->setStayLoaded(classInfo(1, "", "").classId, true));
    EXPECT_FALSE(registry_->setStayLoaded(FUIDBytes{}, true));
}

TEST_F(FComponentRegistryTest, FindsAClassOfAGivenModuleOnly) {
    FPluginComponent* component = addPlugin(2, "remembered");
    FModule other;
    EXPECT_EQ(registry_->getComponent(moduleClass(2), component->getModule()), component);
    EXPECT_EQ(registry_->getComponent(moduleClass(2), &other), nullptr);
}

} // namespace
} // namespace tessera
