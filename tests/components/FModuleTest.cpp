#include "components/FModule.h"

#include "components/HostContext.h"
#include "components/ModuleLog.h"
#include "foundation/messages/FMessenger.h"
#include "foundation/object/ClassFactory.h"
#include "persistence/paths/FNPath.h"
#include "platform/NativePath.h"
#include "support/ForeignObject.h"
#include "support/SlotOf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace tessera {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

FRefPtr<FNPath> pathOf(const std::string& native) {
    const auto text = platform::fromNativePath(native);
    return FRefPtr<FNPath>::adopt(new FNPath(FStringRef(text->c_str()), PathKind::file));
}

FRefPtr<FModule> makeModule(const std::string& name) {
    const auto path = pathOf(std::string(TEST_MODULES) + "/" + name + ".shlb");
    return FRefPtr<FModule>::adopt(new FModule(path.get()));
}

void runIdleRounds(int count) {
    for (int i = 0; i < count; ++i) {
        FMessenger::getInstance()->deliverMessages();
    }
}

class FModuleTest : public testing::Test {
protected:
    ~FModuleTest() override {
        FModuleBase::setDeferredUnloading(true);
        FModuleBase::setLibrariesStayInMemory(false);
        setHostContext(nullptr);
    }
    test::ModuleLog log_;
};

TEST_F(FModuleTest, LoadsAndUnloadsThroughItsEntryPoints) {
    const auto module = makeModule("plain");
    EXPECT_FALSE(module->isLoaded());
    EXPECT_EQ(module->getFactory(false), nullptr);
    EXPECT_TRUE(module->load());
    EXPECT_TRUE(module->isLoaded());
    EXPECT_NE(module->getFactory(false), nullptr);
    EXPECT_NE(module->getSymbol("GetPluginFactory"), nullptr);
    EXPECT_EQ(module->getSymbol("nothing of that name"), nullptr);
    module->unload();
    EXPECT_FALSE(module->isLoaded());
    EXPECT_EQ(module->getFactory(false), nullptr);
    EXPECT_EQ(module->getSymbol("GetPluginFactory"), nullptr);
    module->unload();
    EXPECT_THAT(log_.lines(), ElementsAre("plain loaded", "plain factory gone", "plain unloaded"));
}

TEST_F(FModuleTest, LoadedOnceItIsNotLoadedAgain) {
    const auto module = makeModule("plain");
    EXPECT_TRUE(module->load());
    EXPECT_TRUE(module->load());
    EXPECT_THAT(log_.lines(), ElementsAre("plain loaded"));
}

TEST_F(FModuleTest, TheFactoryIsLoadedOnDemand) {
    const auto module = makeModule("plain");
    EXPECT_EQ(module->getFactory(false), nullptr);
    EXPECT_THAT(log_.lines(), IsEmpty());
    EXPECT_NE(module->getFactory(true), nullptr);
}

TEST_F(FModuleTest, GoesWithItsObject) {
    makeModule("plain")->load();
    EXPECT_THAT(log_.lines(), ElementsAre("plain loaded", "plain factory gone", "plain unloaded"));
}

TEST_F(FModuleTest, WhatRefusesToBeLoadedIsGivenUp) {
    const auto module = makeModule("refuses_init");
    EXPECT_FALSE(module->load());
    EXPECT_FALSE(module->isLoaded());
    // It was never in, so it isn't told to go.
    EXPECT_THAT(log_.lines(), ElementsAre("refuses_init loaded"));
}

TEST_F(FModuleTest, WithoutAFactoryIsGivenUp) {
    for (const char* name : {"no_factory", "null_factory"}) {
        log_.forget();
        const auto module = makeModule(name);
        EXPECT_FALSE(module->load());
        EXPECT_FALSE(module->isLoaded());
        EXPECT_EQ(module->getFactory(true), nullptr);
        EXPECT_THAT(log_.lines(), ElementsAre(name + std::string(" loaded"), name + std::string(" unloaded"),
                                              name + std::string(" loaded"), name + std::string(" unloaded")));
    }
}

TEST_F(FModuleTest, BothEntryPointsAreOptional) {
    const auto module = makeModule("bare");
    EXPECT_TRUE(module->load());
    module->unload();
    EXPECT_THAT(log_.lines(), ElementsAre("bare factory gone"));
}

TEST_F(FModuleTest, NeedsAPathOfAFileThatCanBeLoaded) {
    EXPECT_FALSE(FModule().load());
    const auto nowhere = pathOf("/nowhere/at/all.shlb");
    EXPECT_FALSE(FModule(nowhere.get()).load());
    const auto plainPath = FRefPtr<FPath>::adopt(new FPath(*pathOf(TINY_LIBRARY)));
    EXPECT_FALSE(FModuleBase(plainPath.get()).load());
    const auto drive = FRefPtr<FNPath>::adopt(new FNPath(FStringRef("C:\\x.shlb"), PathKind::file));
    EXPECT_FALSE(FModule(drive.get()).load());
}

TEST_F(FModuleTest, ABaseModuleLoadsAnyLibrary) {
    const auto path = pathOf(TINY_LIBRARY);
    FModuleBase module(path.get());
    EXPECT_TRUE(module.load());
    EXPECT_NE(module.getSymbol("tinyLibraryAnswer"), nullptr);
    FModule factory(path.get());
    EXPECT_FALSE(factory.load());
}

TEST_F(FModuleTest, HandsTheHostContextToAFactoryThatTakesOne) {
    test::ForeignObject<> context;
    setHostContext(&context);
    makeModule("plain")->load();
    EXPECT_THAT(log_.lines(), ElementsAre("plain loaded", "plain attached", "plain factory gone", "plain unloaded"));
    log_.forget();
    makeModule("longer")->load();
    EXPECT_THAT(log_.lines(), ElementsAre("longer loaded", "longer factory gone", "longer unloaded"));
}

TEST_F(FModuleTest, EqualsAnotherOfTheSamePath) {
    const auto module = makeModule("plain");
    EXPECT_TRUE(module->isEqual(makeModule("plain").get()));
    EXPECT_FALSE(module->isEqual(makeModule("stays").get()));
    EXPECT_FALSE(module->isEqual(nullptr));
    EXPECT_FALSE(module->isEqual(module->getPath()));
    const FModuleBase none;
    EXPECT_TRUE(none.isEqual(&none));
    EXPECT_FALSE(none.isEqual(module.get()));
}

TEST_F(FModuleTest, GoesAtOnceWithTheLastUseWhenUnloadingIsNotDeferred) {
    EXPECT_TRUE(FModuleBase::setDeferredUnloading(false));
    const auto module = makeModule("plain");
    module->use();
    module->use();
    module->load();
    module->unuse();
    EXPECT_TRUE(module->isLoaded());
    module->unuse();
    EXPECT_FALSE(module->isLoaded());
    EXPECT_EQ(module->getUseCount(), 0);
    EXPECT_FALSE(FModuleBase::setDeferredUnloading(true));
}

TEST_F(FModuleTest, GoesAHundredRoundsAfterTheLastUse) {
    const auto module = makeModule("plain");
    module->use();
    module->load();
    module->unuse();
    runIdleRounds(100);
    EXPECT_TRUE(module->isLoaded());
    runIdleRounds(1);
    EXPECT_FALSE(module->isLoaded());
}

TEST_F(FModuleTest, AUseInTheMeantimeKeepsIt) {
    const auto module = makeModule("plain");
    module->use();
    module->load();
    module->unuse();
    runIdleRounds(50);
    module->use();
    EXPECT_FALSE(FMessenger::getInstance()->hasMessages(module.get(), "Unload"));
    runIdleRounds(200);
    EXPECT_TRUE(module->isLoaded());
    module->unuse();
    runIdleRounds(101);
    EXPECT_FALSE(module->isLoaded());
}

TEST_F(FModuleTest, ASecondEndOfUseDoesNotHurryIt) {
    const auto module = makeModule("plain");
    module->use();
    module->load();
    module->unuse();
    runIdleRounds(60);
    module->unuse();
    EXPECT_EQ(module->getUseCount(), 0);
    runIdleRounds(41);
    EXPECT_FALSE(module->isLoaded());
    EXPECT_FALSE(FMessenger::getInstance()->hasMessages(module.get(), "Unload")) << "one message was sent for both";
}

TEST_F(FModuleTest, ThatIsMarkedToStayIsNeverUnloadedByItsUsers) {
    for (const bool deferred : {true, false}) {
        FModuleBase::setDeferredUnloading(deferred);
        const auto module = makeModule("plain");
        module->setStaysLoaded(true);
        module->use();
        module->load();
        module->unuse();
        runIdleRounds(200);
        EXPECT_TRUE(module->isLoaded());
        EXPECT_EQ(module->getUseCount(), 0);
    }
}

TEST_F(FModuleTest, MarkedToStayAfterItsLastUseStays) {
    const auto module = makeModule("plain");
    module->use();
    module->load();
    module->unuse();
    module->setStaysLoaded(true);
    runIdleRounds(101);
    EXPECT_TRUE(module->isLoaded());
}

TEST_F(FModuleTest, InformationWithFlag8MarksItToStay) {
    const auto module = makeModule("plain");
    FactoryInfo info;
    info.flags = 16;
    module->setInfo(info);
    EXPECT_FALSE(module->staysLoaded());
    info.flags = 8;
    module->setInfo(info);
    EXPECT_EQ(module->getFlags(), 1u);
    EXPECT_EQ(module->getInfo().flags, 8);
}

TEST_F(FModuleTest, TheUseCountNeverFallsBelow0) {
    FModule module;
    module.unuse();
    module.unuse();
    EXPECT_EQ(module.getUseCount(), 0);
    module.use();
    EXPECT_EQ(module.getUseCount(), 1);
}

TEST_F(FModuleTest, KeepsLibrariesInMemoryOnDemand) {
    FModuleBase::setLibrariesStayInMemory(true);
    auto module = makeModule("plain");
    module->load();
    using Entry = bool (*)();
    const auto entry = reinterpret_cast<Entry>(module->getSymbol("InitDll"));
    module.reset();
    EXPECT_THAT(log_.lines(), ElementsAre("plain loaded", "plain factory gone", "plain unloaded"));
    // Still there to be called.
    EXPECT_TRUE(entry());
}

TEST_F(FModuleTest, AnyThreadMayLeaveALibraryInMemory) {
    FModuleBase::setLibrariesStayInMemory(true);
    std::atomic<int> ready{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            std::vector<FRefPtr<FModule>> modules;
            for (int count = 0; count < 500; ++count) {
                modules.push_back(makeModule("bare"));
                EXPECT_TRUE(modules.back()->load());
            }
            // All give up theirs at one time.
            for (++ready; ready < 4;) {
                std::this_thread::yield();
            }
            modules.clear();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST_F(FModuleTest, AnyThreadMayUseIt) {
    const auto module = makeModule("plain");
    std::vector<std::thread> threads;
    std::atomic<int> missing{0};
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 200; ++round) {
                module->use();
                missing += module->getFactory(true) == nullptr ? 1 : 0;
                module->unuse();
            }
        });
    }
    // Meanwhile the idle task has its rounds, more than an unloading waits for.
    runIdleRounds(500);
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(missing, 0);
    EXPECT_EQ(module->getUseCount(), 0);
    runIdleRounds(101);
    EXPECT_FALSE(module->isLoaded());
}

TEST_F(FModuleTest, AnswersOtherMessagesWith0) {
    FModule module;
    FMessage other("Load");
    EXPECT_EQ(module.receiveMessage(&other), 0);
    FMessage unload("Unload");
    EXPECT_EQ(module.receiveMessage(&unload), 1);
}

TEST_F(FModuleTest, TheOperationsFollowThoseOfTheRootInOrder) {
    using test::slotOf;
    using M = FModule;
    test::expectConsecutive({slotOf(&CmObject::clone), slotOf(&M::use), slotOf(&M::unuse), slotOf(&M::onUnloadRequest),
                             slotOf(&M::load), slotOf(&M::unload), slotOf(&M::onLoaded), slotOf(&M::onUnloading),
                             slotOf(&M::getFactory), slotOf(&M::setInfo)});
}

TEST_F(FModuleTest, BothClassesAreCreatedByName) {
    for (const char* name : {"FModuleBase", "FModule"}) {
        const auto object = FRefPtr<CmObject>::adopt(ClassFactory::getInstance(true)->createObject(name));
        ASSERT_TRUE(object) << name;
        EXPECT_STREQ(object->getClassName(), name);
        EXPECT_TRUE(object->isTypeOf("FModuleBase", true));
    }
}

TEST_F(FModuleTest, TheExchangeModuleGivesItsFactory) {
    const auto path = pathOf(TESX_MODULE);
    FModule module(path.get());
    IModuleFactory* factory = module.getFactory(true);
    ASSERT_NE(factory, nullptr);
    EXPECT_EQ(factory->classCount(), 1);
}

} // namespace
} // namespace tessera
