#include "shell/ExchangeService.h"

#include "discovery/identity/SystemInfo.h"
#include "discovery/registry/ServiceDiscovery.h"
#include "foundation/messages/FTaskList.h"
#include "foundation/object/ClassFactory.h"
#include "platform/Processes.h"
#include "shell/ModuleClasses.h"
#include "shell/hostapi/IModuleFactory.h"
#include "support/FakePeer.h"
#include "support/SystemFolders.h"
#include "support/host/FakeContext.h"
#include "support/host/FakeHost.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <thread>

namespace tessera {
namespace {

using test::FakeContext;
using test::FakeFile;
using test::FakeHost;
using test::FakePeer;
using test::makeFake;
using Sent = std::vector<std::string>;
using namespace std::chrono_literals;

FRefPtr<IIPCSemaphore> namedEvent(const char* name) {
    auto event = FRefPtr<IIPCSemaphore>::adopt(
        static_cast<IIPCSemaphore*>(ClassFactory::getInstance(true)->createInstance(IIPCSemaphore::iid)));
    EXPECT_EQ(event->create(name), kResultOk);
    return event;
}

// Whether the event was set. A wait ends by a signal alone, so one that doesn't end is given one.
bool wasSet(IIPCSemaphore& event) {
    auto waiting = std::async(std::launch::async, [&] { return event.wait(); });
    const bool set = waiting.wait_for(200ms) == std::future_status::ready;
    if (!set) {
        event.signal();
    }
    waiting.wait();
    return set;
}

class ExchangeServiceTest : public testing::Test {
protected:
    ~ExchangeServiceTest() override {
        // The peer answers to the end, so that nobody waits for an answer.
        service_->terminate();
        service_.reset();
        // The registry of this process outlives the service, and would take the next test's signal for a farewell.
        ServiceDiscovery::getInstance().removeByPath(recordPath("com.marlgrove.tessera").generic_string());
        std::filesystem::remove(recordPath("com.marlgrove.tessera"));
        std::filesystem::remove(recordPath("com.marlgrove.bad"));
    }

    static std::filesystem::path recordPath(const std::string& name) {
        return testing_support::temporaryPath() / "Marlgrove" / "ServiceDiscovery" / name;
    }
    static void writeRecord(const std::string& name, const std::string& text) {
        std::filesystem::create_directories(recordPath(name).parent_path());
        std::ofstream(recordPath(name)) << text;
    }
    // This process stands in for that of the peer, so the record is that of a live one.
    static void writePeerRecord() {
        writeRecord("com.marlgrove.tessera",
                    platform::ownBaseName() + "\n" + std::to_string(platform::ownProcessId()) + "\ntesxcon_nanomsg\n");
    }
    static std::string address() { return LinkSocket::userAddress(systemInfo().userName); }

    FResult start() { return service_->initialize(context_.get()); }
    bool idleUntil(const std::function<bool()>& condition) {
        const auto deadline = std::chrono::steady_clock::now() + 10s;
        while (!condition() && std::chrono::steady_clock::now() < deadline) {
            host_.idleHost->idle();
            std::this_thread::sleep_for(1ms);
        }
        return condition();
    }

    FakeHost host_;
    FRefPtr<FakeContext> context_ = makeFake<FakeContext>("Harrow Max", "9.0.20", host_.services.get());
    std::unique_ptr<FakePeer> peer_;
    FRefPtr<ExchangeService> service_ = FRefPtr<ExchangeService>::adopt(new ExchangeService);
};

TEST_F(ExchangeServiceTest, TellsTheNameOfItsBaseToTheFoundation) {
    EXPECT_STREQ(service_->getClassName(), "PluginBase");
    EXPECT_TRUE(service_->isTypeOf("PluginBase", false));
    EXPECT_TRUE(service_->isTypeOf("FObject", true));
    EXPECT_FALSE(service_->isTypeOf("FObject", false));
    EXPECT_FALSE(service_->isTypeOf("ExchangeService", true));
    EXPECT_FALSE(service_->isTypeOf(nullptr, true));
}

TEST_F(ExchangeServiceTest, TheFactoryGivesItsPluginTable) {
    IModuleFactory* factory = getModuleFactory();
    void* out = nullptr;
    ASSERT_EQ(factory->createObject(kExchangeServiceClass, IBaseUnknown::iid, &out), kResultOk);
    auto* plugin = static_cast<IPlugin*>(out);
    EXPECT_EQ(plugin->initialize(nullptr), kResultFalse);
    EXPECT_EQ(plugin->terminate(), kResultOk);
    EXPECT_EQ(plugin->release(), 0u);
    factory->release();
}

TEST_F(ExchangeServiceTest, ANullContextIsRefused) {
    EXPECT_EQ(service_->initialize(nullptr), kResultFalse);
    EXPECT_EQ(service_->terminate(), kResultOk);
}

TEST_F(ExchangeServiceTest, AHostThatIsNotAdmittedIsLeftAlone) {
    const auto event = namedEvent("broadcast_release_kite_driver");
    const auto stranger = makeFake<FakeContext>("harrow", "9.0.0", host_.services.get());
    EXPECT_EQ(service_->initialize(stranger.get()), kResultFalse);
    context_->anonymous = true;
    EXPECT_EQ(start(), kResultFalse);
    EXPECT_FALSE(wasSet(*event));
    EXPECT_TRUE(host_.commandTable->commands.empty());
    EXPECT_TRUE(host_.idleHost->clients.empty());
    EXPECT_FALSE(std::filesystem::exists(recordPath("com.marlgrove.tesx")));
    EXPECT_EQ(service_->terminate(), kResultOk);
}

TEST_F(ExchangeServiceTest, EachInitializeSetsTheReleaseEvent) {
    const auto event = namedEvent("broadcast_release_kite_driver");
    EXPECT_EQ(start(), kResultOk);
    EXPECT_TRUE(wasSet(*event));
    EXPECT_FALSE(wasSet(*event));
    EXPECT_EQ(start(), kResultOk);
    EXPECT_TRUE(wasSet(*event));
    EXPECT_EQ(host_.commandTable->commands.size(), 1u);
    EXPECT_EQ(host_.commandTarget->handlers.size(), 1u);
    EXPECT_EQ(host_.exports->listeners.size(), 1u);
}

TEST_F(ExchangeServiceTest, WithoutServicesOnlyTheEventIsSet) {
    const auto event = namedEvent("broadcast_release_kite_driver");
    const auto bare = makeFake<FakeContext>("Harrow", "9.0.0", nullptr);
    EXPECT_EQ(service_->initialize(bare.get()), kResultFalse);
    EXPECT_TRUE(wasSet(*event));
    EXPECT_EQ(service_->terminate(), kResultOk);
    // What was found before is gone.
    EXPECT_EQ(hostServices(), nullptr);
    EXPECT_EQ(start(), kResultOk);
}

// The event lives as long as somebody has it open, and one that is opened anew begins unset. A second initialize leaves
// its first handle open to the end of the process, so each of these has a process of its own.
class ExchangeServiceDeathTest : public ExchangeServiceTest {
protected:
    ExchangeServiceDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    static bool isEventSet() { return wasSet(*namedEvent("broadcast_release_kite_driver")); }
};

TEST_F(ExchangeServiceDeathTest, ARefusedServiceKeepsTheEventToItsEnd) {
    const auto bare = makeFake<FakeContext>("Harrow", "9.0.0", nullptr);
    EXPECT_EXIT(
        {
            service_->initialize(bare.get());
            service_->terminate();
            const bool kept = isEventSet();
            service_->initialize(bare.get());
            service_->terminate();
            std::_Exit(kept && isEventSet() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(ExchangeServiceDeathTest, TheEndOfARefusedServiceLetsTheEventGo) {
    const auto bare = makeFake<FakeContext>("Harrow", "9.0.0", nullptr);
    EXPECT_EXIT(
        {
            service_->initialize(bare.get());
            service_.reset();
            std::_Exit(isEventSet() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(ExchangeServiceDeathTest, TerminateLetsTheEventGo) {
    EXPECT_EXIT(
        {
            start();
            service_->terminate();
            std::_Exit(isEventSet() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(ExchangeServiceTest, TheHostsServicesAreUsedInTheirOrder) {
    ASSERT_EQ(start(), kResultOk);
    EXPECT_EQ(host_.services->asked, (Sent{"IIdleHost", "IProjectList", "IObjectRegistry", "IObjectTest",
                                           "IDriverArbiter", "ICommandTable", "ICommandTarget", "IExportHost"}));
    host_.services->asked.clear();
    service_->terminate();
    EXPECT_EQ(host_.services->asked, (Sent{"IExportHost", "ICommandTarget", "ICommandTable", "IDriverArbiter",
                                           "IObjectRegistry", "IIdleHost"}));
}

TEST_F(ExchangeServiceTest, EntersTheCommand) {
    ASSERT_EQ(start(), kResultOk);
    ASSERT_EQ(host_.commandTable->commands.size(), 1u);
    const auto& command = host_.commandTable->commands[0];
    EXPECT_EQ(command.group, "Audio");
    EXPECT_EQ(command.name16, u"Edit in Tessera");
    EXPECT_EQ(command.unused, 0);
    EXPECT_EQ(command.category, "Tessera Exchange");
    EXPECT_EQ(command.name, "Edit in Tessera");
    EXPECT_EQ(host_.commandTarget->enabled,
              (std::vector<std::pair<std::string, std::string>>{{"Tessera Exchange", "Edit in Tessera"}}));
    EXPECT_EQ(host_.commandTarget->handlers.size(), 1u);
}

TEST_F(ExchangeServiceTest, AHostThatRefusesTheHandlerHasTheCommandWithoutEnabling) {
    host_.script.failAlways("commandTarget.addHandler");
    EXPECT_EQ(start(), kResultOk);
    EXPECT_EQ(host_.commandTable->commands.size(), 1u);
    EXPECT_TRUE(host_.commandTarget->enabled.empty());
}

TEST_F(ExchangeServiceTest, JoinsTheHostAndTheRegistry) {
    ASSERT_EQ(start(), kResultOk);
    EXPECT_EQ(host_.drivers->clients.size(), 1u);
    EXPECT_EQ(host_.exports->listeners.size(), 1u);
    EXPECT_EQ(host_.projects->listeners.size(), 1u);
    // The one that runs the timers; the link's comes with the peer.
    EXPECT_EQ(host_.idleHost->clients.size(), 1u);
    std::ifstream record(recordPath("com.marlgrove.tesx"));
    std::string name;
    std::string id;
    std::string type;
    std::getline(record, name);
    std::getline(record, id);
    std::getline(record, type);
    EXPECT_EQ(name, platform::ownBaseName());
    EXPECT_EQ(id, std::to_string(platform::ownProcessId()));
    EXPECT_EQ(type, "tesxcon_nanomsg");
}

TEST_F(ExchangeServiceTest, TerminateUndoesEverything) {
    const int live = test::liveDoubles;
    ASSERT_EQ(start(), kResultOk);
    const FRefPtr<ICommandHandler> handler = host_.commandTarget->handlers.at(0);
    EXPECT_EQ(service_->terminate(), kResultOk);
    EXPECT_TRUE(host_.commandTable->commands.empty());
    EXPECT_TRUE(host_.commandTarget->handlers.empty());
    EXPECT_TRUE(host_.drivers->clients.empty());
    EXPECT_TRUE(host_.exports->listeners.empty());
    EXPECT_TRUE(host_.projects->listeners.empty());
    EXPECT_TRUE(host_.project->listeners.empty());
    EXPECT_TRUE(host_.registry->observers.empty());
    EXPECT_TRUE(host_.idleHost->clients.empty());
    EXPECT_FALSE(std::filesystem::exists(recordPath("com.marlgrove.tesx")));
    EXPECT_EQ(handler->checkOrExecute("Tessera Exchange", "Edit in Tessera", true), kResultFalse);
    EXPECT_EQ(test::liveDoubles, live);
    EXPECT_EQ(service_->terminate(), kResultOk);
}

TEST_F(ExchangeServiceTest, TheHostIsHeldByNothingAfterTerminate) {
    const std::uint32_t context = context_->references();
    ASSERT_EQ(start(), kResultOk);
    service_->terminate();
    EXPECT_EQ(context_->references(), context);
    EXPECT_EQ(host_.projects->references(), 2u);
    EXPECT_EQ(host_.idleHost->references(), 2u);
    EXPECT_EQ(host_.drivers->references(), 2u);
}

TEST_F(ExchangeServiceTest, RunsAgainAfterTerminate) {
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(start(), kResultOk);
        EXPECT_EQ(host_.commandTable->commands.size(), 1u);
        EXPECT_EQ(host_.idleHost->clients.size(), 1u);
        EXPECT_TRUE(std::filesystem::exists(recordPath("com.marlgrove.tesx")));
        EXPECT_EQ(service_->terminate(), kResultOk);
    }
    EXPECT_TRUE(host_.idleHost->clients.empty());
}

TEST_F(ExchangeServiceTest, AHostWithoutAnyServiceOfItsOwnIsServed) {
    test::HostScript script;
    const auto empty = makeFake<test::FakeServices>(script);
    FakeHost::keepForGood(empty);
    const auto context = makeFake<FakeContext>("Ostrey", "7.1.20", empty.get());
    EXPECT_EQ(service_->initialize(context.get()), kResultOk);
    EXPECT_EQ(service_->terminate(), kResultOk);
    setHostServices(nullptr);
}

TEST_F(ExchangeServiceTest, APeerThatRunsAlreadyIsFoundAndGreeted) {
    writePeerRecord();
    peer_ = std::make_unique<FakePeer>(address());
    ASSERT_EQ(start(), kResultOk);
    EXPECT_EQ(peer_->received(1), Sent{"2;sendConnectionInfo;Harrow Max;9.0.20;true;"});
    EXPECT_EQ(host_.idleHost->clients.size(), 2u);
    EXPECT_EQ(service_->terminate(), kResultOk);
    EXPECT_EQ(peer_->received(2).back(), "2;sendConnectionInfo;Harrow Max;9.0.20;false;");
    EXPECT_TRUE(host_.idleHost->clients.empty());
}

TEST_F(ExchangeServiceTest, ALinkThatCouldntBeBoundLeavesNothingBehindEither) {
    LinkSocket occupant(address());
    ASSERT_TRUE(occupant.open(LinkSide::Bind));
    testing::internal::CaptureStdout();
    const bool isShared = LinkSocket(address()).open(LinkSide::Bind);
    if (isShared) {
        testing::internal::GetCapturedStdout();
        GTEST_SKIP() << "two sockets may have one address here";
    }
    writePeerRecord();
    ASSERT_EQ(start(), kResultOk);
    EXPECT_EQ(host_.idleHost->clients.size(), 2u);
    EXPECT_EQ(service_->terminate(), kResultOk);
    EXPECT_NE(testing::internal::GetCapturedStdout().find("nn_bind/nn_connect failed"), std::string::npos);
    EXPECT_TRUE(host_.idleHost->clients.empty());
}

TEST_F(ExchangeServiceTest, ThePeerIsToldOfTheEndBeforeAnythingElseGoes) {
    writePeerRecord();
    peer_ = std::make_unique<FakePeer>(address());
    ASSERT_EQ(start(), kResultOk);
    peer_->received(1);
    std::atomic<bool> wasRegistered{false};
    peer_->beforeAnswering(
        [&](const std::string&) { wasRegistered = std::filesystem::exists(recordPath("com.marlgrove.tesx")); });
    host_.services->asked.clear();
    EXPECT_EQ(service_->terminate(), kResultOk);
    EXPECT_TRUE(wasRegistered);
    // The link's idle client goes next.
    EXPECT_EQ(host_.services->asked.at(0), "IIdleHost");
}

TEST_F(ExchangeServiceTest, ARecordOfTheOwnServiceOpensNothing) {
    ASSERT_EQ(start(), kResultOk);
    const std::vector<ServiceObserver> observers = ServiceDiscovery::getInstance().observers();
    ASSERT_EQ(observers.size(), 1u);
    EXPECT_EQ(observers[0].name, "com.marlgrove.tessera");
    EXPECT_EQ(observers[0].type, "tesxcon_nanomsg");
    ServiceRecord record;
    record.name = "com.marlgrove.tesx";
    observers[0].onAvailable(record);
    EXPECT_EQ(host_.idleHost->clients.size(), 1u);
    peer_ = std::make_unique<FakePeer>(address());
    record.name = "com.marlgrove.tessera";
    observers[0].onAvailable(record);
    EXPECT_EQ(host_.idleHost->clients.size(), 2u);
}

TEST_F(ExchangeServiceTest, AnOpenLinkLetsTheCommandRunWithoutAnInstalledPeer) {
    ASSERT_EQ(start(), kResultOk);
    const auto event = makeFake<test::FakeEvent>(host_.script, FRefPtr<test::FakePart>(), test::FakeEvent::Stretch());
    host_.selection->select(1, event.get());
    const FRefPtr<ICommandHandler> handler = host_.commandTarget->handlers.at(0);
    EXPECT_EQ(handler->checkOrExecute("Tessera Exchange", "Edit in Tessera", true), kResultFalse);
    peer_ = std::make_unique<FakePeer>(address());
    writePeerRecord();
    ServiceDiscovery::getInstance().scan();
    EXPECT_EQ(handler->checkOrExecute("Tessera Exchange", "Edit in Tessera", true), kResultOk);
}

TEST_F(ExchangeServiceTest, ASecondInitializeFindsAndGreetsThePeerAgain) {
    writePeerRecord();
    peer_ = std::make_unique<FakePeer>(address());
    ASSERT_EQ(start(), kResultOk);
    service_->terminate();
    peer_->received(2);
    ASSERT_EQ(start(), kResultOk);
    EXPECT_EQ(peer_->received(3).back(), "2;sendConnectionInfo;Harrow Max;9.0.20;true;");
}

TEST_F(ExchangeServiceTest, APeerThatComesLaterIsFoundByItsSignalAndLostByTheNext) {
    ASSERT_EQ(start(), kResultOk);
    peer_ = std::make_unique<FakePeer>(address());
    writePeerRecord();
    const auto event = namedEvent("com.marlgrove.tessera");
    event->signal();
    EXPECT_TRUE(idleUntil([&] { return host_.idleHost->clients.size() == 2; }));
    EXPECT_EQ(peer_->received(1), Sent{"2;sendConnectionInfo;Harrow Max;9.0.20;true;"});
    event->signal();
    EXPECT_TRUE(idleUntil([&] { return host_.idleHost->clients.size() == 1; }));
    EXPECT_EQ(service_->terminate(), kResultOk);
    // The link was closed, so there is nobody to tell.
    EXPECT_EQ(peer_->received(1).size(), 1u);
}

TEST_F(ExchangeServiceTest, AMalformedRecordEndsTheScanAndNothingElse) {
    writeRecord("com.marlgrove.bad", "name\nno number\ntesxcon_nanomsg\n");
    EXPECT_EQ(start(), kResultOk);
    EXPECT_EQ(host_.commandTable->commands.size(), 1u);
    service_->terminate();
    EXPECT_TRUE(host_.commandTable->commands.empty());
}

TEST_F(ExchangeServiceTest, AMalformedRecordBehindASignalStopsAtTheIdleCall) {
    ASSERT_EQ(start(), kResultOk);
    writeRecord("com.marlgrove.tessera", "name\nno number\ntesxcon_nanomsg\n");
    const auto event = namedEvent("com.marlgrove.tessera");
    event->signal();
    const auto until = std::chrono::steady_clock::now() + 500ms;
    idleUntil([&] { return std::chrono::steady_clock::now() > until; });
    // It goes on all the same: a good record is found.
    peer_ = std::make_unique<FakePeer>(address());
    writePeerRecord();
    event->signal();
    EXPECT_TRUE(idleUntil([&] { return host_.idleHost->clients.size() == 2; }));
}

TEST_F(ExchangeServiceTest, AnExportedFileGoesToThePeer) {
    writePeerRecord();
    peer_ = std::make_unique<FakePeer>(address());
    ASSERT_EQ(start(), kResultOk);
    const FRefPtr<IExportListener> listener = host_.exports->listeners.at(0);
    host_.project->saved = false;
    const auto file = makeFake<FakeFile>(host_.store, host_.script, u"/exports/m\u00EFx.wav");
    class NoAttributes final : public test::FakeObject<UnusedSlots<IAttributeList>> {
        FResult set(const char*, const AttributeValue*, std::int64_t) override { return kResultOk; }
    };
    listener->prepareExport(file.get(), 0, 1, host_.project.get(), makeFake<NoAttributes>().get());
    listener->exportFinished(1);
    EXPECT_EQ(peer_->received(2).back(), "2;renderedFile;/exports/m\xC3\xAFx.wav;");
}

TEST_F(ExchangeServiceTest, TheHostSuspendsThePeer) {
    writePeerRecord();
    peer_ = std::make_unique<FakePeer>(address());
    ASSERT_EQ(start(), kResultOk);
    EXPECT_EQ(host_.drivers->clients.at(0)->suspend(nullptr, u"now"), kResultOk);
    EXPECT_EQ(peer_->received(2).back(), "2;suspendKiteDriver;now;");
}

TEST_F(ExchangeServiceTest, PostedChangesAreDeliveredInTheHostsIdleCalls) {
    ASSERT_EQ(start(), kResultOk);
    bool ran = false;
    FTaskList::process().post([&] { ran = true; });
    EXPECT_TRUE(idleUntil([&] { return ran; }));
}

} // namespace
} // namespace tessera
