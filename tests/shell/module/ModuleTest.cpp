// The built module, loaded as a host loads it: three functions, tables, the registry and the link.
#include "discovery/identity/SystemInfo.h"
#include "platform/DynamicLibrary.h"
#include "platform/Processes.h"
#include "shell/hostapi/FactoryInfo.h"
#include "shell/hostapi/IModuleFactory.h"
#include "shell/hostapi/IPlugin.h"
#include "shell/hostapi/ModuleExports.h"
#include "support/FakePeer.h"
#include "support/SystemFolders.h"
#include "support/host/FakeContext.h"
#include "support/host/FakeHost.h"
#include "workflow/HostText.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <thread>

namespace tessera {
namespace {

using test::FakeContext;
using test::FakeHost;
using test::FakePeer;
using test::makeFake;
using namespace std::chrono_literals;

constexpr FUIDBytes kService = "{973C3773-AC41-4593-BDF4-89C768F4BF5A}"_uid;

class LoadedModule {
public:
    template <class Function>
    Function function(const char* name) const {
        return reinterpret_cast<Function>(library_->symbol(name));
    }
    FRefPtr<IModuleFactory> factory() const {
        return FRefPtr<IModuleFactory>::adopt(function<GetPluginFactoryFunction>(kGetPluginFactoryName)());
    }
    FRefPtr<IPlugin> createService() const {
        void* plugin = nullptr;
        EXPECT_EQ(factory()->createObject(kService, IBaseUnknown::iid, &plugin), kResultOk);
        return FRefPtr<IPlugin>::adopt(static_cast<IPlugin*>(plugin));
    }
    bool isLoaded() const { return library_.has_value(); }
    const std::string& whyNot() const { return reason_; }

private:
    std::string reason_;
    std::optional<platform::DynamicLibrary> library_ = platform::DynamicLibrary::load(TESX_MODULE, &reason_);
};

std::filesystem::path registry() {
    return testing_support::temporaryPath() / "Marlgrove" / "ServiceDiscovery";
}

TEST(Module, LoadsAndAnswersItsThreeFunctions) {
    const LoadedModule module;
    ASSERT_TRUE(module.isLoaded()) << module.whyNot();
    EXPECT_TRUE(module.function<InitDllFunction>(kInitDllName)());
    EXPECT_EQ(module.factory()->classCount(), 1);
    FactoryInfo info;
    EXPECT_EQ(module.factory()->describeFactory(&info), kResultOk);
    EXPECT_STREQ(info.vendor, "Marlgrove Audio Works GmbH");
    EXPECT_TRUE(module.function<ExitDllFunction>(kExitDllName)());
}

TEST(Module, TwoServicesDoNotInterfereUntilOneIsInitialized) {
    const LoadedModule module;
    const auto first = module.createService();
    const auto second = module.createService();
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(first->initialize(nullptr), kResultFalse);
    EXPECT_EQ(second->terminate(), kResultOk);
}

TEST(Module, StaysMappedWhenTheHostLetsItGo) {
    GetPluginFactoryFunction getFactory = nullptr;
    {
        const LoadedModule module;
        getFactory = module.function<GetPluginFactoryFunction>(kGetPluginFactoryName);
    }
    // The code is there, and so are the objects that it made before.
    EXPECT_EQ(FRefPtr<IModuleFactory>::adopt(getFactory())->classCount(), 1);
}

TEST(Module, RunsInRoundsOfLoadUseAndClose) {
    for (int round = 0; round < 3; ++round) {
        FakeHost host;
        const auto context = makeFake<FakeContext>("Ostrey", "7.1.20", host.services.get());
        const LoadedModule module;
        const auto service = module.createService();
        EXPECT_EQ(service->initialize(context.get()), kResultOk);
        EXPECT_EQ(host.commandTable->commands.size(), 1u);
        EXPECT_NE(host.commandTable->commands[0].module, nullptr);
        EXPECT_TRUE(std::filesystem::exists(registry() / "com.marlgrove.tesx"));
        EXPECT_EQ(service->terminate(), kResultOk);
        EXPECT_TRUE(host.commandTable->commands.empty());
        EXPECT_FALSE(std::filesystem::exists(registry() / "com.marlgrove.tesx"));
    }
}

// A host that ends without terminate, in the middle of everything.
TEST(ModuleDeathTest, AHostThatJustEndsDoesNotCrash) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            FakeHost host;
            const auto context = makeFake<FakeContext>("Harrow", "8.5.10", host.services.get());
            const LoadedModule module;
            const auto service = module.createService();
            std::exit(service->initialize(context.get()) == kResultOk ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

// This process stands in for that of the peer, so the record is that of a live one.
void writePeerRecord() {
    std::filesystem::create_directories(registry());
    std::ofstream(registry() / "com.marlgrove.tessera") << platform::ownBaseName() << "\n"
                                                        << platform::ownProcessId() << "\ntesxcon_nanomsg\n";
}

// The same with an open link, a listener and a watch on the peer's process, each with a thread that works for it.
TEST(ModuleDeathTest, NorDoesOneThatIsLinkedToAPeer) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            writePeerRecord();
            auto* peer = new FakePeer(LinkSocket::userAddress(systemInfo().userName));
            FakeHost host;
            const auto context = makeFake<FakeContext>("Harrow", "9.0.0", host.services.get());
            const LoadedModule module;
            const auto service = module.createService();
            const bool linked = service->initialize(context.get()) == kResultOk && peer->received(1).size() == 1;
            std::exit(linked ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

class ModuleRoad : public testing::Test {
protected:
    ModuleRoad() {
        writePeerRecord();
        host_.store.add(u"/audio/take.wav", {1, 1000, 16}, std::vector<std::uint8_t>(20000, 7));
        event_ = host_.addEvent(u"/audio/take.wav", {3, 6, 2});
        host_.selection->select(1, event_.get());
    }
    ~ModuleRoad() override {
        service_->terminate();
        std::filesystem::remove(registry() / "com.marlgrove.tessera");
    }

    FakeHost host_;
    FRefPtr<test::FakeEvent> event_;
    LoadedModule module_;
    FRefPtr<FakeContext> context_ = makeFake<FakeContext>("Harrow", "9.0.0", host_.services.get());
    FakePeer peer_{LinkSocket::userAddress(systemInfo().userName)};
    FRefPtr<IPlugin> service_ = module_.createService();
};

TEST_F(ModuleRoad, TheCommandLeadsToAReplacedEvent) {
    ASSERT_EQ(service_->initialize(context_.get()), kResultOk);
    EXPECT_EQ(peer_.received(1).back(), "2;sendConnectionInfo;Harrow;9.0.0;true;");

    ICommandHandler* command = host_.commandTarget->handlers.at(0).get();
    ASSERT_EQ(command->checkOrExecute("Tessera Exchange", "Edit in Tessera", true), kResultOk);
    ASSERT_EQ(command->checkOrExecute("Tessera Exchange", "Edit in Tessera", false), kResultOk);
    const std::string opened = peer_.received(2).back();
    ASSERT_TRUE(opened.starts_with("2;openFile;")) << opened;
    const std::string path = opened.substr(11, opened.size() - 12);
    const auto exchanged = host_.store.find(wideOf(path));
    ASSERT_NE(exchanged, nullptr);
    EXPECT_EQ(exchanged->bytes.size(), 6000u);

    exchanged->bytes.assign(3000, 9);
    peer_.send("2;finishedFileEdit;" + path + ";");
    const auto deadline = std::chrono::steady_clock::now() + 20s;
    while (host_.undo->blocks.empty() && std::chrono::steady_clock::now() < deadline) {
        host_.idleHost->idle();
        std::this_thread::sleep_for(1ms);
    }
    ASSERT_EQ(host_.undo->blocks.size(), 1u);
    EXPECT_EQ(host_.undo->blocks[0].name, "Edit in Tessera");
    EXPECT_EQ(host_.track->events.at(0)->original(), event_.get());
    EXPECT_EQ(host_.track->events.at(0)->stretch().end, 3 + 8.5);
}

} // namespace
} // namespace tessera
