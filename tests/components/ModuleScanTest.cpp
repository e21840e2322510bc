// Folders of modules: what is found, what is remembered of it, and what is loaded for it.
#include "appservices/defaults/FGlobalDefaultPool.h"
#include "components/ComponentDoubles.h"
#include "components/FComponentRegistry.h"
#include "components/FPluginComponent.h"
#include "components/ModuleLog.h"
#include "persistence/files/FFileSystem.h"
#include "platform/RegistryValues.h"
#include "support/OwnRegistry.h"
#include "support/ScratchFolder.h"
#include "support/SettingsFolder.h"
#include "support/Skips.h"
#include "support/SlotOf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace tessera {
namespace {

using test::moduleClass;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
namespace fs = std::filesystem;

class ModuleScan : public testing::Test {
protected:
    ModuleScan() { renew(); }

    // Another run of the program, with the settings that the last one left.
    void renew() {
        registry_.reset();
        registry_ = FRefPtr<FComponentRegistry>::adopt(new FComponentRegistry);
        registry_->setDefaults(pool_.get());
        log_.forget();
    }
    void put(const std::string& module) { putAs(module + ".shlb", module); }
    void putAs(const std::string& file, const std::string& module) {
        fs::copy_file(fs::path(TEST_MODULES) / (module + ".shlb"), folder_ / file,
                      fs::copy_options::overwrite_existing);
    }
    int scan() { return registry_->scanFolder(*test::nativePath(folder_.path().string(), PathKind::folder)); }
    int scanAgain() {
        renew();
        return scan();
    }
    std::string groupOf(const std::string& file) {
        FString name(FStringRef("Components\\Module Cache\\"));
        name.append(test::nativePath((folder_ / file).string())->getFullPath());
        return FString(name).text8();
    }
    FDefaults* section(const std::string& file) {
        return pool_->getGroup(groupOf(file).c_str(), 0, IDefaultPool::Missing::left);
    }
    bool knows(std::uint8_t module) { return registry_->getComponent(moduleClass(module)) != nullptr; }
    void makeOlder(const std::string& file) {
        const fs::path path = folder_ / file;
        fs::last_write_time(path, fs::last_write_time(path) - std::chrono::seconds(7));
    }

    testing_support::ScratchFolder folder_;
    test::ModuleLog log_;
    FRefPtr<FDefaultPool> pool_ = FRefPtr<FDefaultPool>::adopt(new FDefaultPool);
    FRefPtr<FComponentRegistry> registry_;
};

TEST_F(ModuleScan, FindsTheModulesOfAFolder) {
    put("remembered");
    put("service");
    folder_.write("notes.txt", "no module");
    folder_.write("broken.shlb", "no library");
    fs::create_directory(folder_ / "folder.shlb");
    EXPECT_EQ(scan(), 2);
    EXPECT_EQ(registry_->getModuleCount(), 2);
    EXPECT_TRUE(knows(2));
    EXPECT_TRUE(knows(14));
    EXPECT_EQ(registry_->getScanPath(), nullptr);
    EXPECT_FALSE(registry_->getModule(0)->isLoaded());
    EXPECT_FALSE(registry_->getModule(1)->isLoaded());
}

TEST_F(ModuleScan, OfAFolderThatIsNotThereFindsNothing) {
    EXPECT_EQ(registry_->scanFolder(*test::nativePath("/nowhere/at/all", PathKind::folder)), 0);
}

TEST_F(ModuleScan, LoadsAModuleTheFirstTimeAlone) {
    put("remembered");
    EXPECT_EQ(scan(), 1);
    EXPECT_THAT(log_.lines(), ElementsAre("remembered loaded", "remembered described", "remembered factory gone",
                                          "remembered unloaded"));
    EXPECT_EQ(scanAgain(), 1);
    EXPECT_THAT(log_.lines(), IsEmpty());
    ASSERT_TRUE(knows(2));
    const FComponentDescription* component = registry_->getComponent(moduleClass(2));
    EXPECT_TRUE(component->getName() == FStringRef("remembered 0"));
    EXPECT_TRUE(component->getVersion() == FStringRef("1.2.3.4"));
    EXPECT_EQ(component->getInfo().cardinality, 0x7fffffff);
    EXPECT_TRUE(fieldText(component->getModule()->getInfo().vendor) == FStringRef("Test Vendor"));
}

TEST_F(ModuleScan, PassesOverWhatItKnows) {
    put("remembered");
    EXPECT_EQ(scan(), 1);
    log_.forget();
    EXPECT_EQ(scan(), 0);
    EXPECT_THAT(log_.lines(), IsEmpty());
    EXPECT_EQ(registry_->getModuleCount(), 1);
}

TEST_F(ModuleScan, RemembersUnderTheModulesPath) {
    put("remembered");
    scan();
    FDefaults* group = section("remembered.shlb");
    ASSERT_NE(group, nullptr);
    std::int64_t number = 0;
    EXPECT_TRUE(group->getInt("NumClasses", number));
    EXPECT_EQ(number, 1);
    // Seconds since midnight of the Julian day 0, in UTC.
    std::int64_t created = 0;
    std::int64_t modified = 0;
    FFileSystem::getInstance()->getFileTimes(*test::nativePath((folder_ / "remembered.shlb").string()), created,
                                             modified);
    EXPECT_TRUE(group->getInt("LastModified", number));
    EXPECT_EQ(number, modified + std::int64_t{2440588} * 86400);
}

TEST_F(ModuleScan, LoadsAModuleWhoseFileHasAnotherTime) {
    put("remembered");
    scan();
    section("remembered.shlb")->setString("Vendor", "stale");
    makeOlder("remembered.shlb");
    EXPECT_EQ(scanAgain(), 1);
    EXPECT_THAT(log_.lines(), Contains("remembered loaded"));
    FString vendor;
    section("remembered.shlb")->getString("Vendor", vendor);
    EXPECT_TRUE(vendor == FStringRef("Test Vendor"));
    EXPECT_EQ(scanAgain(), 1);
    EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(ModuleScan, NoticesAModuleReplacedOnTheSameDay) {
    putAs("m.shlb", "remembered");
    scan();
    putAs("m.shlb", "service");
    makeOlder("m.shlb");
    EXPECT_EQ(scanAgain(), 1);
    EXPECT_TRUE(knows(14));
    EXPECT_FALSE(knows(2));
}

TEST_F(ModuleScan, NothingIsLeftOfWhatWasRememberedOfAnotherModule) {
    putAs("m.shlb", "many");
    scan();
    EXPECT_TRUE(section("m.shlb")->has("Class 01 - CID"));
    putAs("m.shlb", "remembered");
    makeOlder("m.shlb");
    EXPECT_EQ(scanAgain(), 1);
    EXPECT_TRUE(section("m.shlb")->has("Class 00 - CID"));
    EXPECT_FALSE(section("m.shlb")->has("Class 01 - CID"));
}

TEST_F(ModuleScan, WithoutTheCacheLoadsEach) {
    put("remembered");
    scan();
    renew();
    registry_->setUseCache(false);
    EXPECT_EQ(scan(), 1);
    EXPECT_THAT(log_.lines(), Contains("remembered loaded"));
}

TEST_F(ModuleScan, WithoutSettingsRemembersNothing) {
    put("remembered");
    pool_->close();
    EXPECT_EQ(scan(), 1);
    EXPECT_EQ(scanAgain(), 1);
    EXPECT_THAT(log_.lines(), Contains("remembered loaded"));
}

TEST_F(ModuleScan, ForgetsWhatCannotBeLoaded) {
    put("remembered");
    scan();
    putAs("remembered.shlb", "no_factory");
    makeOlder("remembered.shlb");
    EXPECT_EQ(scanAgain(), 0);
    EXPECT_EQ(section("remembered.shlb"), nullptr);
    EXPECT_EQ(registry_->getModuleCount(), 0);
    for (const char* name : {"refuses_init", "null_factory"}) {
        putAs("remembered.shlb", name);
        makeOlder("remembered.shlb");
        EXPECT_EQ(scanAgain(), 0) << name;
        EXPECT_EQ(section("remembered.shlb"), nullptr) << name;
    }
}

TEST_F(ModuleScan, LoadsWithoutFlag16EachTime) {
    put("plain");
    EXPECT_EQ(scan(), 1);
    EXPECT_EQ(scanAgain(), 1);
    EXPECT_THAT(log_.lines(), Contains("plain loaded"));
    // With its category accepted it is asked for its classes, and then believed.
    renew();
    registry_->acceptCategory("Service");
    registry_->acceptCategory("Test");
    section("plain.shlb")->setString("Class 00 - Name", "from the cache");
    EXPECT_EQ(scan(), 1);
    EXPECT_THAT(log_.lines(), Contains("plain loaded"));
    EXPECT_THAT(log_.lines(), Contains("plain unloaded"));
    EXPECT_TRUE(registry_->getComponent(moduleClass(1))->getName() == FStringRef("from the cache"));
    // Another category is accepted alone: remembered anew.
    renew();
    registry_->acceptCategory("Service");
    EXPECT_EQ(scan(), 1);
    EXPECT_TRUE(registry_->getComponent(moduleClass(1))->getName() == FStringRef("plain 0"));
}

TEST_F(ModuleScan, NeverBelievesWhatDependsOnProgramOrUser) {
    for (const char* name : {"changes_with_program", "changes_with_user"}) {
        put(name);
    }
    EXPECT_EQ(scan(), 2);
    EXPECT_EQ(scanAgain(), 2);
    EXPECT_THAT(log_.lines(), Contains("changes_with_program loaded"));
    EXPECT_THAT(log_.lines(), Contains("changes_with_user loaded"));
}

TEST_F(ModuleScan, LeavesAModuleWithFlag8Loaded) {
    put("stays");
    EXPECT_EQ(scan(), 1);
    EXPECT_TRUE(registry_->getModule(0)->isLoaded());
    EXPECT_THAT(log_.lines(), ElementsAre("stays loaded", "stays described"));
    EXPECT_EQ(scanAgain(), 1);
    EXPECT_FALSE(registry_->getModule(0)->isLoaded());
    EXPECT_TRUE(registry_->getModule(0)->staysLoaded());
}

TEST_F(ModuleScan, AnExcludedCategoryKeepsTheWholeModuleOut) {
    put("remembered");
    EXPECT_EQ(scan(), 1);
    renew();
    registry_->excludeCategory("Test");
    EXPECT_EQ(scan(), 0);
    EXPECT_FALSE(knows(2));
    EXPECT_EQ(section("remembered.shlb"), nullptr);
}

TEST_F(ModuleScan, AModuleWithoutClassesIsKnownAndLoadedEachTime) {
    put("no_classes");
    EXPECT_EQ(scan(), 1);
    EXPECT_EQ(scanAgain(), 1);
    EXPECT_THAT(log_.lines(), Contains("no_classes loaded"));
}

TEST_F(ModuleScan, RemembersManyClasses) {
    put("many");
    EXPECT_EQ(scan(), 1);
    EXPECT_EQ(registry_->count("Test"), 120);
    EXPECT_EQ(scanAgain(), 1);
    EXPECT_THAT(log_.lines(), IsEmpty());
    EXPECT_EQ(registry_->count("Test"), 120);
    EXPECT_TRUE(registry_->getComponent(moduleClass(13, 119))->getName() == FStringRef("many 119"));
}

TEST_F(ModuleScan, AClassOfTwoModulesBelongsToTheFirst) {
    putAs("a.shlb", "remembered");
    putAs("b.shlb", "remembered");
    EXPECT_EQ(scan(), 2);
    EXPECT_EQ(registry_->count("Test"), 1);
}

TEST_F(ModuleScan, AnUnavailableClassStaysSo) {
    put("remembered");
    scan();
    registry_->setAvailable(moduleClass(2), false);
    registry_->saveAvailability("Test");
    EXPECT_EQ(scanAgain(), 1);
    EXPECT_FALSE(registry_->getComponent(moduleClass(2))->isAvailable());
}

TEST_F(ModuleScan, ADamagedSectionIsWrittenAnew) {
    put("remembered");
    scan();
    section("remembered.shlb")->setString("Class 00 - CID", "nonsense");
    EXPECT_EQ(scanAgain(), 1);
    EXPECT_THAT(log_.lines(), Contains("remembered loaded"));
    EXPECT_TRUE(knows(2));
    EXPECT_EQ(scanAgain(), 1);
    EXPECT_THAT(log_.lines(), IsEmpty());
    section("remembered.shlb")->setInt("NumClasses", 0x7fffffff);
    EXPECT_EQ(scanAgain(), 1);
    EXPECT_THAT(log_.lines(), Contains("remembered loaded"));
}

TEST_F(ModuleScan, TakesTheOneFileThatTheFilterNames) {
    putAs("one.module", "remembered");
    put("service");
    const auto folder = test::nativePath(folder_.path().string(), PathKind::folder);
    const auto file = test::nativePath((folder_ / "one.module").string());
    EXPECT_EQ(registry_->scanFolder(*folder, file.get()), 1);
    EXPECT_TRUE(knows(2));
    EXPECT_FALSE(knows(14));
}

TEST_F(ModuleScan, TakesTheTargetOfALink) {
    const testing_support::ScratchFolder elsewhere;
    fs::copy_file(fs::path(TEST_MODULES) / "remembered.shlb", elsewhere / "far.shlb");
    const auto link = test::nativePath((folder_ / "near").string());
    ASSERT_TRUE(FFileSystem::getInstance()->createLink(*link, *test::nativePath((elsewhere / "far.shlb").string())));
    if (testing_support::whyNoSymbolicLinks() == nullptr) {
        fs::create_symlink("nowhere.shlb", folder_ / "dangling.shlb.lnk");
    }
    EXPECT_EQ(scan(), 1);
    EXPECT_TRUE(registry_->getModule(0)->getPath()->getName() == FStringRef("far.shlb"));
}

TEST_F(ModuleScan, KnowsAModuleFileByItsExtension) {
    EXPECT_TRUE(registry_->getFileType().getDosType() == FStringRef("shlb"));
    EXPECT_TRUE(registry_->getFileType().getName() == FStringRef("Module"));
    EXPECT_TRUE(registry_->isModuleFile(*test::nativePath("/x/a.shlb")));
    EXPECT_TRUE(registry_->isModuleFile(*test::nativePath("/x/a.SHLB")));
    EXPECT_FALSE(registry_->isModuleFile(*test::nativePath("/x/a.shl")));
    EXPECT_FALSE(registry_->isModuleFile(*test::nativePath("/x/shlb")));
    EXPECT_FALSE(registry_->isModuleFile(FPath(*test::nativePath("/x/a.shlb"))));
}

TEST_F(ModuleScan, FindsModulesByNameAndPlace) {
    put("remembered");
    scan();
    FModuleBase* module = registry_->getModule(0);
    EXPECT_EQ(registry_->findModule("remembered.shlb"), module);
    EXPECT_EQ(registry_->findModule("REMEMBERED.shlb"), module);
    EXPECT_EQ(registry_->indexOfModule("remembered.shlb"), 0);
    EXPECT_EQ(registry_->findModule("none.shlb"), nullptr);
    EXPECT_EQ(registry_->indexOfModule("none.shlb"), -1);
    EXPECT_EQ(registry_->getModule(1), nullptr);
    EXPECT_EQ(registry_->getModule(-1), nullptr);
}

TEST_F(ModuleScan, RemovingAModuleRemovesItsClasses) {
    put("remembered");
    put("many");
    scan();
    test::NotedComponents observer;
    registry_->addObserver(&observer);
    EXPECT_TRUE(registry_->removeModule(registry_->indexOfModule("remembered.shlb")));
    EXPECT_THAT(observer.events, ElementsAre("-remembered 0"));
    EXPECT_EQ(registry_->count("Test"), 120);
    EXPECT_EQ(registry_->getModuleCount(), 1);
    EXPECT_FALSE(registry_->removeModule(1));
    EXPECT_FALSE(registry_->removeModule(-1));
    registry_->removeObserver(&observer);
}

TEST_F(ModuleScan, TheHooksAreCalledForEachModuleAndEachScan) {
    struct Noted : FComponentRegistry {
        void onModuleAdded(FModuleBase& module) override {
            events.push_back("added " + std::string(FString(module.getPath()->getName()).text8()));
            EXPECT_NE(getScanPath(), nullptr);
        }
        void onCacheComplete() override { events.emplace_back("complete"); }
        std::vector<std::string> events;
    };
    put("remembered");
    const auto registry = FRefPtr<Noted>::adopt(new Noted);
    registry->setDefaults(pool_.get());
    registry->scanFolder(*test::nativePath(folder_.path().string(), PathKind::folder));
    EXPECT_THAT(registry->events, ElementsAre("added remembered.shlb", "complete"));
}

TEST_F(ModuleScan, OfPlainLibrariesLoadsEachAndKeepsNone) {
    put("remembered");
    put("no_factory");
    const auto manager = FRefPtr<FModuleManager>::adopt(new FModuleManager("Libraries"));
    manager->setDefaults(pool_.get());
    EXPECT_EQ(manager->scanFolder(*test::nativePath(folder_.path().string(), PathKind::folder)), 2);
    EXPECT_THAT(log_.lines(), Contains("remembered unloaded"));
    EXPECT_THAT(log_.lines(), Contains("no_factory unloaded"));
    EXPECT_FALSE(manager->getModule(0)->isLoaded());
}

TEST_F(ModuleScan, TheOperationsFollowThoseOfTheRootInOrder) {
    using test::slotOf;
    using M = FModuleManager;
    test::expectConsecutive({slotOf(&CmObject::clone), slotOf(&M::getFileType), slotOf(&M::isModuleFile),
                             slotOf(&M::createModule), slotOf(&M::loadCache), slotOf(&M::storeCache),
                             slotOf(&M::onModuleAdded), slotOf(&M::onModuleRemoved), slotOf(&M::onCacheComplete)});
}

TEST_F(ModuleScan, LeavesUnloadingDeferred) {
    put("remembered");
    scan();
    EXPECT_TRUE(FModuleBase::setDeferredUnloading(true));
}

TEST_F(ModuleScan, OurOwnModuleIsLoadedOnceAndRemembered) {
    fs::copy_file(TESX_MODULE, folder_ / "TesseraExchange.shlb");
    constexpr FUIDBytes kService = "{973C3773-AC41-4593-BDF4-89C768F4BF5A}"_uid;
    EXPECT_EQ(scan(), 1);
    ASSERT_NE(registry_->getComponent(kService), nullptr);
    EXPECT_EQ(registry_->count("Service"), 1);
    EXPECT_EQ(scanAgain(), 1);
    FComponentDescription* component = registry_->getComponent(kService);
    ASSERT_NE(component, nullptr);
    EXPECT_FALSE(component->getModule()->isLoaded());
    EXPECT_TRUE(component->getName() == FStringRef("Tessera Exchange"));
    EXPECT_TRUE(component->getVersion() == FStringRef("1.5.10.6"));
    EXPECT_TRUE(component->getCategory() == FStringRef("Service"));
    EXPECT_TRUE(fieldText(component->getModule()->getInfo().vendor) == FStringRef("Marlgrove Audio Works GmbH"));
}

// What was remembered goes through the files of the settings, in both forms.
TEST_F(ModuleScan, IsRememberedByTheNextRunOfTheProgram) {
    using Files = FGlobalDefaultPool::Files;
    const test::SettingsFolder settings;
    const fs::path folder = folder_ / "K\xC3\xB6ln \xE9\x9F\xB3";
    fs::create_directory(folder);
    fs::copy_file(fs::path(TEST_MODULES) / "remembered.shlb", folder / "remembered.shlb");
    const auto path = test::nativePath(folder.string(), PathKind::folder);
    for (const Files files : {Files::one, Files::split}) {
        FGlobalDefaultPool::setBaseName(files == Files::one ? "OneFile" : "ManyFiles");
        for (const bool first : {true, false}) {
            const auto pool = FRefPtr<FGlobalDefaultPool>::adopt(new FGlobalDefaultPool);
            pool->setFiles(files);
            pool->load();
            pool->restore();
            renew();
            registry_->setDefaults(pool.get());
            EXPECT_EQ(registry_->scanFolder(*path), 1);
            EXPECT_EQ(log_.lines().empty(), !first);
            ASSERT_TRUE(knows(2));
            EXPECT_TRUE(fieldText(registry_->getComponent(moduleClass(2))->getInfo().vendor) ==
                        FStringRef(u"Class V\u00E9ndor \u97F3"));
            EXPECT_TRUE(pool->save(FGlobalDefaultPool::RunSavers::yes));
        }
    }
    FGlobalDefaultPool::setBaseName("Defaults");
}

TEST_F(ModuleScan, UsesTheSettingsOfTheProcessUnlessToldOtherwise) {
    registry_->setDefaults(nullptr);
    EXPECT_EQ(registry_->getDefaults(), FGlobalDefaultPool::getInstance());
    registry_->setDefaults(pool_.get());
    EXPECT_EQ(registry_->getDefaults(), pool_.get());
}

constexpr std::u16string_view kSharedKey = u"Software\\Marlgrove\\Shared Components";

TEST_F(ModuleScan, SharedComponentsLieWhereTheRegistrySays) {
    const testing_support::OwnRegistry values;
    const auto folder = platform::fromNativePath(testing_support::utf8OfPath(folder_.path()));
    ASSERT_TRUE(platform::writeRegistryValue(kSharedKey, u"Path", *folder));
    put("remembered");
    EXPECT_EQ(registry_->scanSharedComponents(), 1);
    EXPECT_TRUE(knows(2));
    ASSERT_TRUE(platform::writeRegistryValue(kSharedKey, u"Path", u""));
    EXPECT_TRUE(FModuleManager::sharedComponentsFolder().isEmpty());
    EXPECT_EQ(registry_->scanSharedComponents(), 0);
}

TEST_F(ModuleScan, SharedComponentsLieInTheCommonProgramFilesByDefault) {
    const testing_support::OwnRegistry values;
    const FString folder = FModuleManager::sharedComponentsFolder();
    EXPECT_TRUE(folder.endsWith(FStringRef("\\Marlgrove\\Shared Components")));
    const auto entered = platform::readRegistryValue(kSharedKey, u"Path");
    ASSERT_TRUE(entered);
    EXPECT_TRUE(folder == FStringRef(entered->c_str()));
    EXPECT_TRUE(FModuleManager::sharedComponentsFolder() == folder);
}

} // namespace
} // namespace tessera
