#include "discovery/registry/ServiceDiscovery.h"

#include "platform/Processes.h"
#include "tests/discovery/registry/RegistryTest.h"

#include <filesystem>
#include <stdexcept>

namespace tessera::test {
namespace {

using Events = std::vector<std::string>;

const std::string kComes = "available com.marlgrove.tessera";
const std::string kGoes = "unavailable com.marlgrove.tessera";

class ServiceDiscoveryTest : public RegistryTest {
protected:
    void SetUp() override {
        RegistryTest::SetUp();
        registry_.start(kOwnServiceName);
    }

    std::string recordOf(const Helper& helper) const {
        return kHelperName + kLineEnd + std::to_string(helper.id()) + kLineEnd + "tesxcon_nanomsg" + kLineEnd;
    }

    ServiceDiscovery registry_;
};

TEST_F(ServiceDiscoveryTest, StartMakesTheFolder) {
    EXPECT_EQ(registry_.folder(), folder());
    EXPECT_TRUE(std::filesystem::is_directory(folder()));
    registry_.start(kOwnServiceName);
    EXPECT_TRUE(std::filesystem::is_directory(folder()));
}

TEST_F(ServiceDiscoveryTest, RegisteringWritesTheRecordOfThisProcess) {
    registry_.registerService(ownServiceId());
    EXPECT_EQ(readRecord("com.marlgrove.tesx"),
              OWN_NAME + kLineEnd + std::to_string(platform::ownProcessId()) + kLineEnd + "tesxcon_nanomsg" + kLineEnd);
    ASSERT_EQ(registry_.records().size(), 1u);
    const ServiceRecord& record = registry_.records()[0];
    EXPECT_EQ(record.name, "com.marlgrove.tesx");
    EXPECT_EQ(record.type, "tesxcon_nanomsg");
    EXPECT_EQ(record.path, pathOf("com.marlgrove.tesx"));
    EXPECT_EQ(record.processId, platform::ownProcessId());
    EXPECT_EQ(record.processName, OWN_NAME);
    EXPECT_TRUE(registry_.isKnown("com.marlgrove.tesx"));
}

TEST_F(ServiceDiscoveryTest, ObserversAreMatchedByNameAndType) {
    observe(registry_, {"com.marlgrove.tesx", "another type"});
    observe(registry_, peerServiceId());
    observe(registry_, ownServiceId());
    registry_.registerService(ownServiceId());
    EXPECT_EQ(events_, (Events{"available com.marlgrove.tesx"}));
    registry_.unregisterService(ownServiceId());
    EXPECT_EQ(events_, (Events{"available com.marlgrove.tesx", "unavailable com.marlgrove.tesx"}));
}

TEST_F(ServiceDiscoveryTest, UnregisteringTakesTheFileAndTheRecordAway) {
    registry_.registerService(ownServiceId());
    registry_.unregisterService(ownServiceId());
    EXPECT_FALSE(hasRecord("com.marlgrove.tesx"));
    EXPECT_TRUE(registry_.records().empty());
}

TEST_F(ServiceDiscoveryTest, UnregisteringWhatIsntKnownDeletesNoFile) {
    writeRecord("com.marlgrove.tesx", "other\n1\ntesxcon_nanomsg\n");
    registry_.unregisterService(ownServiceId());
    EXPECT_TRUE(hasRecord("com.marlgrove.tesx"));
    registry_.registerService(ownServiceId());
    registry_.unregisterService({"com.marlgrove.tesx", "another type"});
    EXPECT_TRUE(hasRecord("com.marlgrove.tesx"));
}

TEST_F(ServiceDiscoveryTest, ScanFindsAPeerThatRunsAlready) {
    const auto peer = startHelper(kPeerServiceName);
    EXPECT_EQ(peer->ask("register com.marlgrove.tessera"), "done");
    EXPECT_EQ(readRecord("com.marlgrove.tessera"), recordOf(*peer));
    observe(registry_, peerServiceId());
    registry_.scan();
    EXPECT_EQ(events_, (Events{kComes}));
    ASSERT_EQ(registry_.records().size(), 1u);
    EXPECT_EQ(registry_.records()[0].processId, peer->id());
}

TEST_F(ServiceDiscoveryTest, ScanTellsOfAKnownPeerOnceMore) {
    const auto peer = startHelper(kPeerServiceName);
    EXPECT_EQ(peer->ask("register com.marlgrove.tessera"), "done");
    registry_.scan();
    observe(registry_, peerServiceId());
    registry_.scan();
    EXPECT_EQ(events_, (Events{kComes}));
    EXPECT_EQ(registry_.records().size(), 2u);
    registry_.serviceChanged(kPeerServiceName);
    EXPECT_EQ(events_, (Events{kComes, kGoes, kGoes}));
    EXPECT_TRUE(registry_.records().empty());
}

TEST_F(ServiceDiscoveryTest, APeerThatComesLaterIsHeard) {
    observe(registry_, peerServiceId());
    registry_.scan();
    EXPECT_EQ(events_, Events{});
    const auto peer = startHelper(kPeerServiceName);
    peer->ask("register com.marlgrove.tessera");
    ASSERT_TRUE(hears(1));
    EXPECT_EQ(events_, (Events{kComes}));
    peer->ask("unregister com.marlgrove.tessera");
    ASSERT_TRUE(hears(2));
    EXPECT_EQ(events_, (Events{kComes, kGoes}));
    EXPECT_TRUE(registry_.records().empty());
}

TEST_F(ServiceDiscoveryTest, BothSidesHearEachOther) {
    const auto peer = startHelper(kPeerServiceName);
    peer->ask("observe com.marlgrove.tesx");
    observe(registry_, peerServiceId());
    registry_.registerService(ownServiceId());
    EXPECT_EQ(peer->ask("next"), "available com.marlgrove.tesx");
    peer->ask("register com.marlgrove.tessera");
    ASSERT_TRUE(hears(1));
    registry_.unregisterService(ownServiceId());
    EXPECT_EQ(peer->ask("next"), "unavailable com.marlgrove.tesx");
}

TEST_F(ServiceDiscoveryTest, ASignalOfAKnownPeerIsTakenForItsGoing) {
    observe(registry_, peerServiceId());
    const auto peer = startHelper(kPeerServiceName);
    peer->ask("register com.marlgrove.tessera");
    ASSERT_TRUE(hears(1));
    createServiceEvent("com.marlgrove.tessera")->signal();
    ASSERT_TRUE(hears(2));
    EXPECT_EQ(events_, (Events{kComes, kGoes})) << "though its process still runs";
    createServiceEvent("com.marlgrove.tessera")->signal();
    ASSERT_TRUE(hears(3));
    EXPECT_EQ(events_, (Events{kComes, kGoes, kComes}));
}

TEST_F(ServiceDiscoveryTest, AKilledPeerIsNoticedWithoutASignalAndItsFileStays) {
    observe(registry_, peerServiceId());
    auto peer = startHelper(kPeerServiceName);
    peer->ask("register com.marlgrove.tessera");
    ASSERT_TRUE(hears(1));
    const std::string record = readRecord("com.marlgrove.tessera");
    peer->kill();
    ASSERT_TRUE(hears(2));
    EXPECT_EQ(events_, (Events{kComes, kGoes}));
    EXPECT_EQ(readRecord("com.marlgrove.tessera"), record);
    registry_.scan();
    EXPECT_EQ(events_.size(), 2u) << "the stale file tells nothing";

    peer = startHelper(kPeerServiceName);
    peer->ask("register com.marlgrove.tessera");
    ASSERT_TRUE(hears(3));
    EXPECT_EQ(readRecord("com.marlgrove.tessera"), recordOf(*peer)) << "the next one overwrites it";
}

TEST_F(ServiceDiscoveryTest, ThePeersSuccessorStaysWhenThePeersEndIsNoticedLate) {
    observe(registry_, peerServiceId());
    const auto first = startHelper(kPeerServiceName);
    first->ask("register com.marlgrove.tessera");
    ASSERT_TRUE(hears(1));
    // The service ends and begins again, and nobody runs tasks in between.
    registry_.stopObserving(peerServiceId());
    first->kill();
    const auto second = startHelper(kPeerServiceName);
    second->ask("register com.marlgrove.tessera");
    registry_.start(kOwnServiceName);
    observe(registry_, peerServiceId());
    registry_.scan();
    EXPECT_EQ(events_, (Events{kComes, kComes}));
    EXPECT_FALSE(hears(3, std::chrono::milliseconds(300))) << events_.back();
    EXPECT_TRUE(registry_.isKnown("com.marlgrove.tessera"));
    second->kill();
    ASSERT_TRUE(hears(3));
    EXPECT_EQ(events_.back(), kGoes);
}

TEST_F(ServiceDiscoveryTest, AStaleRecordIsIgnoredAndLeft) {
    auto dead = startHelper("");
    const std::string record = recordOf(*dead);
    dead->kill();
    writeRecord("com.marlgrove.tessera", record);
    observe(registry_, peerServiceId());
    registry_.scan();
    registry_.serviceChanged("com.marlgrove.tessera");
    EXPECT_EQ(events_, Events{});
    EXPECT_FALSE(registry_.isLiveRecord(pathOf("com.marlgrove.tessera")));
    EXPECT_EQ(readRecord("com.marlgrove.tessera"), record);
}

TEST_F(ServiceDiscoveryTest, AProcessIdInOtherHandsIsNotAlive) {
    const auto other = startHelper("");
    writeRecord("com.marlgrove.tessera", "tessera\n" + std::to_string(other->id()) + "\ntesxcon_nanomsg\n");
    observe(registry_, peerServiceId());
    registry_.scan();
    EXPECT_EQ(events_, Events{});
    EXPECT_TRUE(registry_.records().empty());
}

TEST_F(ServiceDiscoveryTest, AForeignFileIsntEvenRead) {
    // Read, it would raise.
    writeRecord("org.example.service", "no\nnumber\n");
    writeRecord("com.marlgrov", "");
    EXPECT_NO_THROW(registry_.scan());
    EXPECT_TRUE(registry_.records().empty());
    EXPECT_FALSE(registry_.isLiveRecord(pathOf("org.example.service")));
}

TEST_F(ServiceDiscoveryTest, AMalformedRecordStopsTheCaller) {
    writeRecord("com.marlgrove.broken", "name\nnumber\ntype\n");
    try {
        registry_.scan();
        ADD_FAILURE() << "scan went on";
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(), "invalid stoi argument");
    }
    writeRecord("com.marlgrove.broken", "name\n4294967296\ntype\n");
    try {
        registry_.serviceChanged("com.marlgrove.broken");
        ADD_FAILURE() << "the change was taken in";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "stoi argument out of range");
    }
}

TEST_F(ServiceDiscoveryTest, AProcessDoesntDiscoverItself) {
    writeRecord("com.marlgrove.tesx", OWN_NAME "\n" + std::to_string(platform::ownProcessId()) + "\ntesxcon_nanomsg\n");
    observe(registry_, ownServiceId());
    registry_.scan();
    registry_.serviceChanged("com.marlgrove.tesx");
    EXPECT_EQ(events_, Events{});
}

TEST_F(ServiceDiscoveryTest, ASignalOfTheOwnServiceChangesNothing) {
    registry_.registerService(ownServiceId());
    registry_.serviceChanged("com.marlgrove.tesx");
    EXPECT_TRUE(registry_.isKnown("com.marlgrove.tesx"));
}

TEST_F(ServiceDiscoveryTest, TwoHostsOfOneUserShareTheirFile) {
    registry_.registerService(ownServiceId());
    const auto second = startHelper(kOwnServiceName);
    second->ask("register com.marlgrove.tesx");
    EXPECT_EQ(readRecord("com.marlgrove.tesx"), recordOf(*second)) << "the later one overwrites";
    registry_.unregisterService(ownServiceId());
    EXPECT_FALSE(hasRecord("com.marlgrove.tesx")) << "and the first one deletes";
}

TEST_F(ServiceDiscoveryTest, AListenerEndsThoughAnotherHostListensToo) {
    const auto second = startHelper(kOwnServiceName);
    second->ask("observe com.marlgrove.tessera");
    for (int round = 0; round < 20; ++round) {
        observe(registry_, peerServiceId());
        registry_.stopObserving(peerServiceId());
    }
    EXPECT_TRUE(registry_.observers().empty());
}

TEST_F(ServiceDiscoveryTest, TwoHostsFindAPeerThatRunsAlready) {
    const auto peer = startHelper(kPeerServiceName);
    peer->ask("register com.marlgrove.tessera");
    const auto second = startHelper(kOwnServiceName);
    second->ask("observe com.marlgrove.tessera");
    second->ask("scan");
    EXPECT_EQ(second->ask("next"), kComes);
    observe(registry_, peerServiceId());
    registry_.scan();
    EXPECT_EQ(events_, (Events{kComes}));
    peer->kill();
    EXPECT_EQ(second->ask("next"), kGoes);
    ASSERT_TRUE(hears(2));
    EXPECT_EQ(events_, (Events{kComes, kGoes}));
}

TEST_F(ServiceDiscoveryTest, StoppingForgetsTheObserver) {
    observe(registry_, peerServiceId());
    registry_.stopObserving(peerServiceId());
    EXPECT_TRUE(registry_.observers().empty());
    const auto peer = startHelper(kPeerServiceName);
    peer->ask("register com.marlgrove.tessera");
    registry_.scan();
    EXPECT_EQ(events_, Events{});
    EXPECT_TRUE(registry_.isKnown("com.marlgrove.tessera"));
    registry_.stop();
    EXPECT_TRUE(registry_.isKnown("com.marlgrove.tessera")) << "stop does nothing";
}

TEST_F(ServiceDiscoveryTest, ANewObserverTakesTheListenerOver) {
    observe(registry_, {"com.marlgrove.first", kLinkServiceType});
    observe(registry_, {"com.marlgrove.second", kLinkServiceType});
    const auto other = startHelper("");
    other->ask("register com.marlgrove.first");
    other->ask("register com.marlgrove.second");
    ASSERT_TRUE(hears(1));
    EXPECT_EQ(events_, (Events{"available com.marlgrove.second"}));
}

TEST_F(ServiceDiscoveryTest, ACallbackMayChangeTheRegistry) {
    int told = 0;
    registry_.observe(
        ownServiceId(),
        [&](const ServiceRecord&) {
            ++told;
            registry_.stopObserving(ownServiceId());
            observe(registry_, peerServiceId());
        },
        nullptr);
    registry_.registerService(ownServiceId());
    registry_.unregisterService(ownServiceId());
    EXPECT_EQ(told, 1);
    EXPECT_EQ(registry_.observers().size(), 1u);
}

TEST_F(ServiceDiscoveryTest, RecordsGoByPathAndByProcess) {
    const auto peer = startHelper(kPeerServiceName);
    peer->ask("register com.marlgrove.tessera");
    observe(registry_, peerServiceId());
    EXPECT_TRUE(registry_.isLiveRecord(pathOf("com.marlgrove.tessera")));
    registry_.refresh();
    EXPECT_TRUE(registry_.isKnown("com.marlgrove.tessera"));
    registry_.removeByPath(pathOf("com.marlgrove.other"));
    EXPECT_TRUE(registry_.isKnown("com.marlgrove.tessera"));
    registry_.removeByPath(pathOf("com.marlgrove.tessera"));
    EXPECT_FALSE(registry_.isKnown("com.marlgrove.tessera"));
    registry_.refresh();
    registry_.removeByProcessId(peer->id());
    EXPECT_EQ(events_, (Events{kComes, kGoes, kComes, kGoes}));
    EXPECT_TRUE(hasRecord("com.marlgrove.tessera")) << "the file is its service's";
}

TEST_F(ServiceDiscoveryTest, APostedChangeWaitsForTheIdleTask) {
    const auto peer = startHelper(kPeerServiceName);
    peer->ask("register com.marlgrove.tessera");
    observe(registry_, peerServiceId());
    registry_.postServiceChanged("com.marlgrove.tessera");
    EXPECT_EQ(events_, Events{});
    FTaskList::process().runTasks();
    EXPECT_EQ(events_, (Events{kComes}));
}

TEST_F(ServiceDiscoveryTest, ATaskThatOutlivesTheRegistryDoesNothing) {
    {
        ServiceDiscovery brief;
        brief.start("");
        brief.postServiceChanged("com.marlgrove.tessera");
    }
    EXPECT_EQ(FTaskList::process().runTasks(), 1u);
}

TEST_F(ServiceDiscoveryTest, KnownMeansOfTheLinksType) {
    registry_.registerService({"com.marlgrove.tesx", "another type"});
    EXPECT_FALSE(registry_.isKnown("com.marlgrove.tesx"));
}

TEST_F(ServiceDiscoveryTest, WithoutAFolderTheRecordStandsAllTheSame) {
    const testing_support::ScopedTemporaryFolder nowhere(scratch_.write("file", ""));
    registry_.start(kOwnServiceName);
    observe(registry_, ownServiceId());
    registry_.registerService(ownServiceId());
    EXPECT_EQ(events_, (Events{"available com.marlgrove.tesx"}));
    EXPECT_EQ(registry_.records().size(), 1u);
    registry_.scan();
    registry_.unregisterService(ownServiceId());
    EXPECT_TRUE(registry_.records().empty());
}

TEST_F(ServiceDiscoveryTest, TheProcessHasOneOfItsOwn) {
    EXPECT_EQ(&ServiceDiscovery::getInstance(), &ServiceDiscovery::getInstance());
}

} // namespace
} // namespace tessera::test
