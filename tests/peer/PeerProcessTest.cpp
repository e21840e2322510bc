// The real program, with a host played by this test: registry, events and socket are the ones of the field.
#include "common/OpenSound.h"
#include "discovery/identity/SystemInfo.h"
#include "discovery/registry/ServiceDiscovery.h"
#include "foundation/messages/FIdleTimer.h"
#include "link/LinkSocket.h"
#include "link/WireMessage.h"
#include "peer/HandOver.h"
#include "platform/TemporaryFolder.h"
#include "platform/ThreadTimer.h"
#include "support/Eventually.h"
#include "support/HelperProcess.h"
#include "support/ScratchFolder.h"
#include "support/SetAside.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>

namespace tessera::peer {
namespace {

using testing_support::eventually;
using testing_support::HelperProcess;
using testing_support::ScratchFolder;
using testing_support::utf8OfPath;

constexpr const char* kReverse = EDITOR_HELPER " reverse {in} {out}";

// What the module does in a host: binds when the peer appears, greets it, closes when it goes.
class PlayedHost {
public:
    PlayedHost() : link_(LinkSocket::userAddress(systemInfo().userName)) {
        discovery_.start(kOwnServiceName);
        discovery_.observe(
            peerServiceId(),
            [this](const ServiceRecord&) {
                link_.open(LinkSide::Bind);
                answer_ = link_.sendAndReceive(
                    writeMessage({WireVerb::sendConnectionInfo, "Harrow Max", "9.0.20", "true"}), SendMode::Blocking);
                ++greetings_;
            },
            [this](const ServiceRecord&) {
                link_.close();
                ++losses_;
            });
        discovery_.registerService(ownServiceId());
        discovery_.scan();
    }
    ~PlayedHost() {
        discovery_.unregisterService(ownServiceId());
        discovery_.stopObserving(peerServiceId());
    }

    bool waitForGreeting() {
        return eventually([this] { return turn() && greetings_ > 0; });
    }
    bool waitForLoss() {
        return eventually([this] { return turn() && losses_ > 0; });
    }
    // The next message, empty when none comes.
    std::string hear() {
        std::string message;
        eventually([&] {
            turn();
            message = link_.receive();
            return !message.empty();
        });
        return message;
    }
    void tell(std::string_view verb, const std::string& path) {
        link_.send(writeMessage({verb, path}), SendMode::NonBlocking);
    }
    std::string ask(std::initializer_list<std::string_view> fields) {
        return link_.sendAndReceive(writeMessage(fields), SendMode::Blocking);
    }

    const std::string& answer() const { return answer_; }

private:
    static bool turn() {
        platform::runDueTimers();
        return true;
    }

    FIdleTimer idle_;
    ServiceDiscovery discovery_;
    LinkSocket link_;
    std::string answer_;
    int greetings_ = 0;
    int losses_ = 0;
};

class PeerProcessTest : public testing::Test {
protected:
    std::string writeSound(const char* name, const std::vector<short>& samples) {
        const std::string path = utf8OfPath((exchange_ / name).make_preferred());
        SF_INFO info = {};
        info.samplerate = 48000;
        info.channels = 1;
        info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
        SNDFILE* file = programs::openSound(path, SFM_WRITE, &info);
        EXPECT_NE(nullptr, file);
        sf_write_short(file, samples.data(), static_cast<sf_count_t>(samples.size()));
        sf_close(file);
        return path;
    }
    static std::vector<short> readSound(const std::string& path) {
        SF_INFO info = {};
        SNDFILE* file = programs::openSound(path, SFM_READ, &info);
        EXPECT_NE(nullptr, file);
        std::vector<short> samples(static_cast<std::size_t>(info.frames));
        sf_read_short(file, samples.data(), info.frames);
        sf_close(file);
        return samples;
    }
    // Reads the program's lines up to the one that holds the text; empty when there is none.
    static std::string whatItSays(HelperProcess& peer, const char* text) {
        for (;;) {
            const std::string line = peer.hear();
            if (line == "(end)" || line == "(nothing)") {
                return {};
            }
            if (line.find(text) != std::string::npos) {
                return line;
            }
        }
    }
    static bool hearsLine(HelperProcess& peer, const char* text) { return !whatItSays(peer, text).empty(); }

    // What the program has printed so far, for the message of a failure.
    static std::string whatItSaid(HelperProcess& peer) {
        constexpr auto kNoWait = std::chrono::milliseconds(0);
        std::string text;
        for (std::string line = peer.hear(kNoWait); line != "(end)" && line != "(nothing)"; line = peer.hear(kNoWait)) {
            text += line + '\n';
        }
        return text;
    }

    ScratchFolder exchange_;
};

TEST_F(PeerProcessTest, StartedByTheModuleItEditsAndReports) {
    const std::string file = writeSound("a;b \xC3\xBC.wav", {1, 2, 3, 4});
    PlayedHost host;
    HelperProcess peer(TESX_PEER, {"--editor", kReverse, "--once", "--tesx", file});
    ASSERT_TRUE(host.waitForGreeting());
    EXPECT_EQ("ok", host.answer());
    EXPECT_EQ(writeMessage({"finishedFileEdit", file}), host.hear());
    EXPECT_EQ((std::vector<short>{4, 3, 2, 1}), readSound(file));
    // The splice begins: the peer may go, and says so in the registry.
    exchange_.write("further.wav", "");
    EXPECT_TRUE(host.waitForLoss());
    EXPECT_EQ(0, peer.finish());
}

TEST_F(PeerProcessTest, StartedByHandBeforeTheHostItWaitsForIt) {
    HelperProcess peer(TESX_PEER, {"--editor", kReverse});
    // A host that starts between the peer's record and its signal would take the signal for its end.
    ASSERT_TRUE(hearsLine(peer, "ready"));
    PlayedHost host;
    ASSERT_TRUE(host.waitForGreeting());
    const std::string file = writeSound("a;b.wav", {5, 6});
    host.tell(WireVerb::openFile, file);
    EXPECT_EQ(writeMessage({"finishedFileEdit", file}), host.hear());
    EXPECT_EQ((std::vector<short>{6, 5}), readSound(file));
    peer.kill();
    EXPECT_TRUE(host.waitForLoss());
}

// Two messages at once. Where the link writes them in the background, one that didn't wait for the other would be lost,
// now and then and more often on a busy machine.
TEST_F(PeerProcessTest, AnEditThatIsDoneBeforeTheHostComesIsReportedRightBehindTheAnswerToItsGreeting) {
    const std::string file = writeSound("a.wav", {5, 6});
    HelperProcess peer(TESX_PEER, {"--editor", kReverse, "--tesx", file});
    ASSERT_TRUE(hearsLine(peer, "waiting for the host"));
    PlayedHost host;
    ASSERT_TRUE(host.waitForGreeting());
    EXPECT_EQ("ok", host.answer());
    EXPECT_EQ(writeMessage({"finishedFileEdit", file}), host.hear());
}

TEST_F(PeerProcessTest, AFailingEditorIsReportedAsCancelled) {
    const std::string file = writeSound("a.wav", {5, 6});
    PlayedHost host;
    HelperProcess peer(TESX_PEER, {"--editor", EDITOR_HELPER " exit 1 {in} {out}", "--tesx", file});
    ASSERT_TRUE(host.waitForGreeting()) << whatItSaid(peer);
    EXPECT_EQ(writeMessage({"cancelFileEdit", file}), host.hear());
    EXPECT_EQ((std::vector<short>{5, 6}), readSound(file));
}

TEST_F(PeerProcessTest, ItAnswersWhileTheEditorWorks) {
    const std::string file = writeSound("a.wav", {5, 6});
    PlayedHost host;
    HelperProcess peer(TESX_PEER, {"--editor", EDITOR_HELPER " linger-at a.wav {in} {out}", "--tesx", file});
    ASSERT_TRUE(host.waitForGreeting());
    ASSERT_TRUE(hearsLine(peer, "editing"));
    EXPECT_EQ("ok", host.ask({WireVerb::suspendKiteDriver, "text"}));
    EXPECT_EQ("ok", host.ask({WireVerb::sendConnectionInfo, "Harrow Max", "9.0.20", "false"}));
}

TEST_F(PeerProcessTest, ASecondStartHandsItsFileToTheFirst) {
    const std::string file = writeSound("a.wav", {5, 6});
    PlayedHost host;
    HelperProcess live(TESX_PEER, {"--editor", kReverse});
    ASSERT_TRUE(host.waitForGreeting());
    HelperProcess second(TESX_PEER, {"--editor", kReverse, "--tesx", file});
    EXPECT_TRUE(hearsLine(second, "handed to the tesx-peer that runs already"));
    EXPECT_EQ(0, second.finish());
    EXPECT_EQ(writeMessage({"finishedFileEdit", file}), host.hear());
}

TEST_F(PeerProcessTest, ASecondStartThatTakesThePlaceOfTheFirstEditsAllItsFiles) {
    const std::string one = writeSound("a.wav", {5, 6});
    const std::string two = writeSound("b.wav", {7, 8});
    const std::string folder = platform::temporaryFolder() + "/Marlgrove/TesxPeer";
    auto first = std::make_unique<HandOver>(folder);
    ASSERT_TRUE(first->tryBecomeLive());
    PlayedHost host;
    HelperProcess second(TESX_PEER, {"--editor", kReverse, one, two});
    const auto hasLetter = [&] {
        const std::filesystem::directory_iterator entries(testing_support::pathOfUtf8(folder));
        return std::any_of(begin(entries), end(entries),
                           [](const auto& entry) { return entry.path().extension() == ".open"; });
    };
    ASSERT_TRUE(eventually(hasLetter));
    first.reset();
    ASSERT_TRUE(host.waitForGreeting());
    EXPECT_EQ(writeMessage({"finishedFileEdit", one}), host.hear());
    EXPECT_EQ(writeMessage({"finishedFileEdit", two}), host.hear());
}

// What the second start is given is told from its own folder.
TEST_F(PeerProcessTest, AFileThatIsNamedFromTheFolderAroundItIsHandedOverWhole) {
    const std::string file = writeSound("a.wav", {5, 6});
    PlayedHost host;
    HelperProcess live(TESX_PEER, {"--editor", kReverse});
    ASSERT_TRUE(host.waitForGreeting());
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(exchange_.path());
    HelperProcess second(TESX_PEER, {"--editor", kReverse, "a.wav"});
    std::filesystem::current_path(before);
    EXPECT_EQ(0, second.finish());
    EXPECT_EQ(writeMessage({"finishedFileEdit", file}), host.hear());
}

TEST_F(PeerProcessTest, AnEditThatIsGivenUpMakesRoomForTheNext) {
    const std::string first = writeSound("a.wav", {5, 6});
    const std::string second = writeSound("b.wav", {7, 8});
    PlayedHost host;
    HelperProcess peer(TESX_PEER, {"--editor", EDITOR_HELPER " linger-at a.wav {in} {out}"});
    ASSERT_TRUE(host.waitForGreeting());
    // One by one: where the link hands its messages to the system in the background, one that doesn't wait is dropped
    // while another is under way.
    host.tell(WireVerb::openFile, first);
    ASSERT_TRUE(hearsLine(peer, "editing"));
    host.tell(WireVerb::openFile, second);
    EXPECT_EQ("ok", host.ask({WireVerb::suspendKiteDriver, "text"}));
    host.tell(WireVerb::cancelFileEdit, first);
    EXPECT_EQ("ok", host.ask({WireVerb::suspendKiteDriver, "text"}));
    EXPECT_EQ(writeMessage({"finishedFileEdit", second}), host.hear());
    EXPECT_EQ((std::vector<short>{5, 6}), readSound(first));
}

// Every start and end of a host signals alike, and one of several is linked.
TEST_F(PeerProcessTest, ASecondHostOfTheUserLeavesTheFirstOneItsLinkAndItsEdit) {
    const std::string slow = writeSound("a.wav", {5, 6});
    const std::string next = writeSound("b.wav", {7, 8});
    PlayedHost host;
    HelperProcess peer(TESX_PEER, {"--editor", EDITOR_HELPER " linger-at a.wav {in} {out}", "--tesx", slow});
    ASSERT_TRUE(host.waitForGreeting());
    ASSERT_TRUE(hearsLine(peer, "editing"));
    HelperProcess second(SERVICE_HELPER);
    ASSERT_EQ("ready", second.hear());
    ASSERT_EQ("done", second.ask(std::string("register ") + kOwnServiceName));
    EXPECT_TRUE(hearsLine(peer, "its link stays"));
    host.tell(WireVerb::cancelFileEdit, slow);
    EXPECT_TRUE(hearsLine(peer, "the host has given up"));
    EXPECT_EQ("ok", host.ask({WireVerb::suspendKiteDriver, "text"}));
    host.tell(WireVerb::openFile, next);
    EXPECT_EQ(writeMessage({"finishedFileEdit", next}), host.hear());
}

TEST_F(PeerProcessTest, TheEndOfALinkedHostIsNoticedAlsoWhereAnotherHasTakenItsPlaceInTheRegistry) {
    LinkSocket link(LinkSocket::userAddress(systemInfo().userName));
    ASSERT_TRUE(link.open(LinkSide::Bind));
    HelperProcess first(SERVICE_HELPER);
    ASSERT_EQ("ready", first.hear());
    ASSERT_EQ("done", first.ask(std::string("register ") + kOwnServiceName));
    HelperProcess peer(TESX_PEER, {"--editor", kReverse, "--tesx"});
    ASSERT_TRUE(hearsLine(peer, "ready"));
    const std::string greeting = writeMessage({WireVerb::sendConnectionInfo, "Harrow Max", "9.0.20", "true"});
    EXPECT_EQ("ok", link.sendAndReceive(greeting, SendMode::Blocking));
    ASSERT_TRUE(hearsLine(peer, "linked"));
    HelperProcess second(SERVICE_HELPER);
    ASSERT_EQ("ready", second.hear());
    ASSERT_EQ("done", second.ask(std::string("register ") + kOwnServiceName));
    EXPECT_TRUE(hearsLine(peer, "its link stays"));
    first.kill();
    EXPECT_TRUE(hearsLine(peer, "the host is gone"));
    EXPECT_EQ(0, peer.finish());
}

TEST_F(PeerProcessTest, TheScriptNamesTheProgramItself) {
    HelperProcess peer(TESX_PEER, {"--print-script", "--editor", kReverse});
    // As the system spells it, which may be another way than it was started.
    const std::string line = whatItSays(peer, "<Path>");
    const std::size_t start = line.find("<Path>") + 6;
    const std::filesystem::path path = testing_support::pathOfUtf8(line.substr(start, line.find("</Path>") - start));
    EXPECT_TRUE(std::filesystem::equivalent(path, TESX_PEER)) << line;
}

TEST_F(PeerProcessTest, AFolderThatCannotBeUsedIsNamedAndTakenForNoOtherPeer) {
    const std::string folder = platform::temporaryFolder() + "/Marlgrove/TesxPeer";
    const testing_support::SetAside aside(testing_support::pathOfUtf8(folder));
    std::ofstream(aside.path()) << "a file is in the way";
    HelperProcess peer(TESX_PEER, {"--editor", kReverse});
    EXPECT_TRUE(hearsLine(peer, ("cannot use the folder " + folder).c_str()));
    EXPECT_EQ(1, peer.finish());
}

TEST_F(PeerProcessTest, AnEditorCommandWithoutPlaceholdersIsRefused) {
    HelperProcess peer(TESX_PEER, {"--editor", "sox"});
    EXPECT_EQ(2, peer.finish());
}

} // namespace
} // namespace tessera::peer
