#include "link/PeerController.h"

#include "discovery/identity/SystemInfo.h"
#include "link/DriverClient.h"
#include "support/Eventually.h"
#include "support/FakePeer.h"
#include "support/FinishedReport.h"
#include "support/ScopedEnvironment.h"
#include "support/SlotOf.h"
#include "support/SystemFolders.h"
#include "support/host/FakeHost.h"
#include "workflow/EditSession.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace tessera {
namespace {

using test::FakeEvent;
using test::FakeFile;
using test::FakeHost;
using test::FakePeer;
using test::makeFake;
using testing_support::eventually;
using testing_support::ScratchFolder;
using testing_support::utf8OfPath;
using Sent = std::vector<std::string>;
using namespace std::chrono_literals;

class PeerControllerTest : public testing::Test {
protected:
    ~PeerControllerTest() override {
        controller_.closeLink();
        EditSession::instance().stop();
        DriverClient::instance().stop();
    }

    static std::string address() { return LinkSocket::userAddress(systemInfo().userName); }

    // Both ends up: what the controller sends from now on arrives.
    void connect() {
        peer_ = std::make_unique<FakePeer>(address());
        ASSERT_TRUE(controller_.openLink());
        controller_.sendConnectionInfo("Harrow Max", "9.0.20", true);
        ASSERT_EQ(peer_->received(1), Sent{"2;sendConnectionInfo;Harrow Max;9.0.20;true;"});
    }

    // Polls until the condition holds; whether it came to that.
    template <class Condition>
    bool pollUntil(Condition condition) {
        const auto deadline = std::chrono::steady_clock::now() + 10s;
        while (!condition() && std::chrono::steady_clock::now() < deadline) {
            controller_.pollOnce();
            std::this_thread::yield();
        }
        return condition();
    }

    // Polls until a message comes that can't be handled; empty when none does.
    std::string failureOfNextMessage() {
        const auto deadline = std::chrono::steady_clock::now() + 10s;
        while (std::chrono::steady_clock::now() < deadline) {
            try {
                controller_.pollOnce();
            } catch (const std::out_of_range& e) {
                return e.what();
            }
            std::this_thread::yield();
        }
        return {};
    }

    // The peer's request for the driver with this text: something whose handling is easily seen.
    std::size_t requests() const { return host_.drivers->requests.size(); }

    FRefPtr<FakeFile> file(const std::u16string& path) { return makeFake<FakeFile>(host_.store, host_.script, path); }

    FakeHost host_;
    PeerController controller_;
    std::unique_ptr<FakePeer> peer_;
};

TEST(PeerLink, ItsTableKeepsItsOrder) {
    EXPECT_EQ(test::slotOf(&IPeerLink::isPeerAvailable), 0u);
    EXPECT_EQ(test::slotOf(&IPeerLink::openAudioFile), 1u);
    EXPECT_EQ(test::slotOf(&IPeerLink::editSelection), 2u);
    EXPECT_EQ(test::slotOf(&IPeerLink::cancelAudioFile), 3u);
    EXPECT_EQ(test::slotOf(&IPeerLink::suspendDriver), 4u);
}

TEST_F(PeerControllerTest, OnAClosedLinkNothingIsSentAndNothingFails) {
    controller_.sendConnectionInfo("a", "b", true);
    controller_.sendCancelFileEdit("/a");
    controller_.sendRenderedFile("/a");
    EXPECT_EQ(controller_.sendSuspendDriver("x"), 0);
    controller_.pollOnce();
    controller_.closeLink();
    EXPECT_FALSE(controller_.isLinkOpen());
    EXPECT_TRUE(host_.idleHost->clients.empty());
}

TEST_F(PeerControllerTest, WithoutAScriptThePeerIsAvailableOnlyWhileLinked) {
    EXPECT_FALSE(controller_.isPeerAvailable());
    controller_.openLink();
    EXPECT_TRUE(controller_.isPeerAvailable());
    controller_.closeLink();
    EXPECT_FALSE(controller_.isPeerAvailable());
}

TEST_F(PeerControllerTest, OpenTwiceKeepsThePump) {
    EXPECT_TRUE(controller_.openLink());
    ASSERT_EQ(host_.idleHost->clients.size(), 1u);
    IIdleClient* pump = host_.idleHost->clients[0];
    EXPECT_TRUE(controller_.openLink());
    EXPECT_EQ(host_.idleHost->clients, std::vector<IIdleClient*>{pump});
    controller_.closeLink();
    EXPECT_TRUE(host_.idleHost->clients.empty());
}

TEST_F(PeerControllerTest, AFailedBindStillMakesThePumpAndAnswersTrue) {
    LinkSocket occupant(address());
    ASSERT_TRUE(occupant.open(LinkSide::Bind));
    testing::internal::CaptureStdout();
    const bool isShared = LinkSocket(address()).open(LinkSide::Bind);
    testing::internal::GetCapturedStdout();
    if (isShared) {
        GTEST_SKIP() << "two sockets may have one address here";
    }
    testing::internal::CaptureStdout();
    EXPECT_TRUE(controller_.openLink());
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "nn_bind/nn_connect failed with error code " + std::to_string(EADDRINUSE) + "\n");
    EXPECT_FALSE(controller_.isLinkOpen());
    EXPECT_EQ(host_.idleHost->clients.size(), 1u);
    host_.idleHost->idle();
    controller_.stopPolling();
    EXPECT_TRUE(host_.idleHost->clients.empty());
    occupant.close();
    // The next open replaces the pump and goes on with the socket.
    EXPECT_TRUE(controller_.openLink());
    EXPECT_TRUE(controller_.isLinkOpen());
    EXPECT_EQ(host_.idleHost->clients.size(), 1u);
}

TEST_F(PeerControllerTest, SendsEveryMessage) {
    connect();
    // One by one: where the socket hands its messages to the system in the background, one that doesn't wait is dropped
    // while another is under way.
    controller_.openAudioFile(file(u"/tmp/t\u00E4ke 1.wav").get());
    peer_->received(2);
    controller_.cancelAudioFile(file(u"/tmp/a;b.wav").get());
    peer_->received(3);
    controller_.sendRenderedFile("/mix.wav");
    peer_->received(4);
    EXPECT_EQ(controller_.suspendDriver(u"Dr\u00FCber"), 0);
    controller_.sendConnectionInfo("Harrow", "9", false);
    EXPECT_EQ(peer_->received(6),
              (Sent{"2;sendConnectionInfo;Harrow Max;9.0.20;true;", "2;openFile;/tmp/t\xC3\xA4ke 1.wav;",
                    "2;cancelFileEdit;/tmp/a;b.wav;", "2;renderedFile;/mix.wav;",
                    "2;suspendKiteDriver;Dr\xC3\xBC"
                    "ber;",
                    "2;sendConnectionInfo;Harrow;9;false;"}));
}

TEST_F(PeerControllerTest, ANullFileIsAnEmptyPath) {
    connect();
    controller_.openAudioFile(nullptr);
    peer_->received(2);
    controller_.cancelAudioFile(nullptr);
    const Sent received = peer_->received(3);
    EXPECT_EQ(received, (Sent{received.at(0), "2;openFile;;", "2;cancelFileEdit;;"}));
}

TEST_F(PeerControllerTest, TheHostNameEndsAtItsFirstZero) {
    connect();
    controller_.sendConnectionInfo(std::string_view("Harrow\0Max", 10), "9", true);
    EXPECT_EQ(peer_->received(2).back(), "2;sendConnectionInfo;Harrow;9;true;");
}

TEST_F(PeerControllerTest, TheAnswerToAQuestionIsDroppedUnread) {
    connect();
    peer_->answerWith("2;requestKiteDriver;not a message;");
    controller_.sendSuspendDriver("x");
    for (int i = 0; i < 10; ++i) {
        controller_.pollOnce();
    }
    EXPECT_EQ(requests(), 0u);
}

TEST_F(PeerControllerTest, AQuestionWithoutAnAnswerEndsAfterTheReceiveTimeOut) {
    connect();
    peer_->answerWith(std::nullopt);
    testing::internal::CaptureStdout();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(controller_.sendSuspendDriver("x"), 0);
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "nn_recv failed with error code " + std::to_string(ETIMEDOUT) + "\n");
    EXPECT_GE(waited, 3900ms);
    EXPECT_LT(waited, 20s);
    // What comes too late is read as a message, and is none.
    peer_->send("late");
    peer_->send("2;requestKiteDriver;next;");
    EXPECT_TRUE(pollUntil([&] { return requests() == 1; }));
}

TEST_F(PeerControllerTest, TheDriverRequestReachesTheHostAndIsAnsweredWithItsText) {
    DriverClient::instance().start(&controller_);
    connect();
    peer_->send("2;requestKiteDriver;abc;");
    EXPECT_TRUE(pollUntil([&] { return requests() == 1; }));
    EXPECT_EQ(host_.drivers->requests[0].first, &DriverClient::instance());
    EXPECT_EQ(host_.drivers->requests[0].second, "abc");
    EXPECT_EQ(peer_->received(2).back(), "abc");
}

TEST_F(PeerControllerTest, WithoutAnArbiterTheDriverRequestIsAnsweredAllTheSame) {
    host_.services->remove<IDriverArbiter>();
    connect();
    peer_->send("2;requestKiteDriver;abc;");
    std::thread polling([&] { EXPECT_EQ(peer_->received(2).back(), "abc"); });
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    while (peer_->received(0).size() < 2 && std::chrono::steady_clock::now() < deadline) {
        controller_.pollOnce();
    }
    polling.join();
}

TEST_F(PeerControllerTest, AnEmptyDriverTextIsAnsweredWithNoBytes) {
    connect();
    peer_->send("2;requestKiteDriver;;");
    EXPECT_TRUE(pollUntil([&] { return requests() == 1; }));
    EXPECT_EQ(host_.drivers->requests[0].second, "");
    // The message of no bytes counts as nothing received; what is behind it arrives. Over a pipe of Windows that may be
    // lost while the one before is still being sent, so it is asked for again.
    std::size_t asked = 1;
    EXPECT_TRUE(eventually([&] {
        peer_->send("2;requestKiteDriver;next;");
        ++asked;
        return pollUntil([&] { return requests() == asked; }) && peer_->received(0).back() == "next";
    }));
}

TEST_F(PeerControllerTest, OneMessageIsHandledPerIdleCall) {
    connect();
    peer_->send("2;requestKiteDriver;1;");
    peer_->send("2;requestKiteDriver;2;");
    peer_->send("2;requestKiteDriver;3;");
    std::size_t handled = 0;
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    while (handled < 3 && std::chrono::steady_clock::now() < deadline) {
        host_.idleHost->idle();
        EXPECT_LE(requests(), handled + 1);
        handled = requests();
    }
    EXPECT_EQ(handled, 3u);
}

TEST_F(PeerControllerTest, ForeignFormatsAndUnknownVerbsAreDroppedWithoutAWord) {
    connect();
    testing::internal::CaptureStdout();
    for (const char* message :
         {"1;requestKiteDriver;a;", "02;requestKiteDriver;a;", ";", "x", "2;;", "2;RequestKiteDriver;a;",
          "2;openFile;a;", "2;renderedFile;a;", "2;requestKiteDriver2;a;"}) {
        peer_->send(message);
    }
    peer_->send("2;requestKiteDriver;end;");
    EXPECT_TRUE(pollUntil([&] { return requests() == 1; }));
    EXPECT_EQ(host_.drivers->requests[0].second, "end");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

// The failure passes out of pollOnce; the host, at its idle call, sees nothing of it.
TEST_F(PeerControllerTest, AMessageThatIsTooShortIsTheSubscriptFailure) {
    connect();
    for (const char* message : {"2;", "2", "2;finishedFileEdit;", "2;openProject;a;1;", "2;requestKiteDriver;"}) {
        peer_->send(message);
        EXPECT_EQ(failureOfNextMessage(), "invalid vector<T> subscript") << message;
    }
    peer_->send("2;finishedFileEdit;");
    peer_->send("2;openProject;a;x;y;");
    peer_->send("2;requestKiteDriver;end;");
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    while (requests() == 0 && std::chrono::steady_clock::now() < deadline) {
        host_.idleHost->idle();
    }
    EXPECT_EQ(requests(), 1u);
}

TEST_F(PeerControllerTest, OpenProjectReachesTheHost) {
    connect();
    peer_->send("2;openProject;/song.project;1.5;2;");
    EXPECT_TRUE(pollUntil([&] { return !host_.transport->located.empty(); }));
    EXPECT_EQ(host_.transport->located, std::vector<double>{1.5});
    EXPECT_EQ(host_.transport->right->values.at(0).first, 3.5);
}

class PeerControllerEdit : public PeerControllerTest {
protected:
    PeerControllerEdit() {
        host_.store.add(u"/audio/take.wav", {1, 1000, 16}, std::vector<std::uint8_t>(2000, 3));
        event_ = host_.addEvent(u"/audio/take.wav", {0, 1, 0});
        host_.selection->select(1, event_.get());
        EditSession::instance().start(&controller_);
    }
    FRefPtr<FakeEvent> event_;
};

TEST_F(PeerControllerEdit, TheWholeRoadOverTheLink) {
    connect();
    IHostFile* file = controller_.editSelection();
    ASSERT_NE(file, nullptr);
    std::string opened = peer_->received(2).back();
    std::ranges::replace(opened, '\\', '/');
    EXPECT_TRUE(opened.starts_with("2;openFile;") && opened.ends_with("/Marlgrove/TeEx/take.wav;")) << opened;
    peer_->send("2;finishedFileEdit;the path isn't used;");
    EXPECT_TRUE(pollUntil([&] { return !host_.undo->blocks.empty(); }));
    EXPECT_NE(host_.track->events.at(0).get(), event_.get());
}

TEST_F(PeerControllerEdit, ACancelWithoutAPathAbandonsTheEdit) {
    connect();
    controller_.editSelection();
    peer_->received(2);
    peer_->send("2;cancelFileEdit;");
    peer_->send("2;requestKiteDriver;end;");
    EXPECT_TRUE(pollUntil([&] { return requests() == 1; }));
    EXPECT_EQ(EditSession::instance().finishEdit(""), kResultFalse);
    // Nothing is sent back: the next message is the answer to the request.
    EXPECT_EQ(peer_->received(3).back(), "end");
}

// The launch needs a script that the controller finds at its construction.
class PeerLaunch : public testing::Test {
protected:
    PeerLaunch() {
        scripts_ = testing_support::pathOfFolder(platform::KnownFolder::commonData) / "Marlgrove" /
                   "Audio Export Post Process Scripts";
        std::filesystem::create_directories(scripts_);
        program_ = folder_ / "a peer";
        program_ += std::filesystem::path(ARGUMENT_HELPER).extension();
        std::filesystem::copy_file(ARGUMENT_HELPER, program_);
    }
    ~PeerLaunch() override { std::filesystem::remove_all(scripts_); }

    void install(const std::string& argument) {
        std::ofstream(scripts_ / "peer.aepp")
            << "<AudioExportPostProcess><Executable><Name>Tessera Max</Name><Version>9.0.0</Version><Path>"
            << utf8OfPath(program_) << "</Path><Argument>" << argument
            << "</Argument></Executable></AudioExportPostProcess>";
    }
    std::string arguments() { return testing_support::finishedReport(folder_, "arguments"); }

    const ScratchFolder folder_;
    const testing_support::ScopedEnvironment report_{"TESX_TEST_REPORT", utf8OfPath(folder_ / "arguments")};
    std::filesystem::path scripts_;
    std::filesystem::path program_;
};

TEST_F(PeerLaunch, AClosedLinkStartsThePeerWithTheFile) {
    install("\"$PATH\"");
    FakeHost host;
    PeerController controller;
    EXPECT_TRUE(controller.isPeerAvailable());
    controller.openAudioFile(makeFake<FakeFile>(host.store, host.script, u"/tmp/t\u00E4ke 'one' 1.wav").get());
    EXPECT_EQ(arguments(), "[--tesx]\n[/tmp/t\xC3\xA4ke 'one' 1.wav]\n");
}

TEST_F(PeerLaunch, ANullFileStartsThePeerWithAnEmptyArgument) {
    install("\"$PATH\"");
    PeerController controller;
    controller.openAudioFile(nullptr);
    EXPECT_EQ(arguments(), "[]\n");
}

TEST_F(PeerLaunch, WithoutAKnownPeerNothingHappens) {
    PeerController controller;
    EXPECT_FALSE(controller.isPeerAvailable());
    controller.openInPeer("/a.wav");
    EXPECT_FALSE(folder_.has("arguments"));
}

TEST_F(PeerLaunch, AProgramThatCannotBeStartedIsNoFailure) {
    program_ = "/does/not/exist";
    install("$PATH");
    PeerController controller;
    EXPECT_TRUE(controller.isPeerAvailable());
    controller.openInPeer("/a.wav");
    EXPECT_FALSE(controller.isLinkOpen());
}

} // namespace
} // namespace tessera
