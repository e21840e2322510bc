// What the service leaves of the system's things behind when it has come and gone.
#include "shell/ExchangeService.h"

#include "discovery/identity/SystemInfo.h"
#include "discovery/registry/ServiceDiscovery.h"
#include "platform/Processes.h"
#include "support/FakePeer.h"
#include "support/SystemFolders.h"
#include "support/host/FakeContext.h"
#include "support/host/FakeHost.h"
#include "support/windows/OpenHandles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>

namespace tessera {
namespace {

using test::FakeContext;
using test::FakeHost;
using test::FakePeer;
using test::makeFake;
using testing_support::expectNoHandleLeftBy;

class ExchangeServiceWindowsTest : public testing::Test {
protected:
    ~ExchangeServiceWindowsTest() override { std::filesystem::remove(peerRecord()); }

    static std::filesystem::path peerRecord() {
        return testing_support::temporaryPath() / "Marlgrove" / "ServiceDiscovery" / "com.marlgrove.tessera";
    }
    // This process stands in for that of the peer.
    static void writePeerRecord() {
        std::filesystem::create_directories(peerRecord().parent_path());
        std::ofstream(peerRecord()) << platform::ownBaseName() << "\n"
                                    << platform::ownProcessId() << "\ntesxcon_nanomsg\n";
    }
    void comeAndGo() {
        const auto service = FRefPtr<ExchangeService>::adopt(new ExchangeService);
        EXPECT_EQ(service->initialize(context_.get()), kResultOk);
        EXPECT_EQ(service->terminate(), kResultOk);
        // What is known of a peer outlives the service.
        ServiceDiscovery::getInstance().removeByProcessId(platform::ownProcessId());
    }

    FakeHost host_;
    FRefPtr<FakeContext> context_ = makeFake<FakeContext>("Harrow Max", "9.0.20", host_.services.get());
};

TEST_F(ExchangeServiceWindowsTest, LeavesNoHandleBehindHoweverOftenItRuns) {
    expectNoHandleLeftBy([this] { comeAndGo(); });
}

TEST_F(ExchangeServiceWindowsTest, LeavesNoHandleBehindWithAPeerEither) {
    writePeerRecord();
    expectNoHandleLeftBy([this] {
        const FakePeer peer(LinkSocket::userAddress(systemInfo().userName));
        comeAndGo();
    });
}

} // namespace
} // namespace tessera
