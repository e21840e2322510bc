// The peer's window comes to the front when a file is opened in a peer that is there.
#include "discovery/identity/SystemInfo.h"
#include "link/PeerController.h"
#include "support/FakePeer.h"
#include "support/host/FakeHost.h"
#include "support/windows/SystemCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessera {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::SystemCalls;

class PeerWindow : public testing::Test {
protected:
    ~PeerWindow() override { controller_.closeLink(); }

    std::vector<std::string> raised() { return calls_.take({"FindWindowW", "SetForegroundWindow"}); }

    test::FakeHost host_;
    PeerController controller_;
    SystemCalls calls_;
};

TEST_F(PeerWindow, IsTheFirstOfTheClassThatThePeersWindowsHave) {
    test::FakePeer peer(LinkSocket::userAddress(systemInfo().userName));
    ASSERT_TRUE(controller_.openLink());
    controller_.sendConnectionInfo("Harrow Max", "9.0.20", true);
    peer.received(1);
    EXPECT_THAT(raised(), IsEmpty());
    controller_.openInPeer("C:\\take.wav");
    EXPECT_THAT(raised(), ElementsAre("FindWindowW(\"Qt5QWindowIcon\", null)", "SetForegroundWindow(null)"));
    EXPECT_EQ(peer.received(2).back(), "2;openFile;C:\\take.wav;");
}

TEST_F(PeerWindow, IsNotAskedForOnAClosedLink) {
    controller_.openInPeer("C:\\take.wav");
    EXPECT_THAT(raised(), IsEmpty());
}

} // namespace
} // namespace tessera
