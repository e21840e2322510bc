#include "link/LinkSocket.h"
#include "link/WireMessage.h"
#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tessera::test {
namespace {

// [link]
class PeerEnd {
public:
    explicit PeerEnd(std::string_view address) : socket_(address) {}

    // Before the peer tells the registry that it is there.
    bool connect() { return socket_.open(LinkSide::Connect); }

    // Called often: reads one message, if there is one.
    void turn() {
        const FieldList fields = readMessage(socket_.receive());
        if (!hasCurrentVersion(fields) || fields.size() < 3) {
            return; // nothing there, or of another version
        }
        if (fields[1] == WireVerb::sendConnectionInfo) {
            socket_.send("ok", SendMode::NonBlocking); // the module's window stands still until this comes
        } else if (fields[1] == WireVerb::openFile) {
            file = fields[2];
        }
    }

    bool tellFinished() {
        return socket_.send(writeMessage({WireVerb::finishedFileEdit, file}), SendMode::NonBlocking) > 0;
    }

    std::string file;

private:
    LinkSocket socket_;
};
// [link]

TEST(LinkExample, AFileComesAndGoesBack) {
    const std::string address = "ipc://" + (std::filesystem::temp_directory_path() / "link.ipc").string();
    LinkSocket module(address);
    PeerEnd peer(address);
    ASSERT_TRUE(peer.connect());
    ASSERT_TRUE(module.open(LinkSide::Bind));
    ASSERT_GT(module.send(writeMessage({WireVerb::sendConnectionInfo, "Host", "1.0", "true"}), SendMode::Blocking), 0);
    ASSERT_GT(module.send(writeMessage({WireVerb::openFile, "/tmp/take.wav"}), SendMode::Blocking), 0);
    ASSERT_TRUE(testing_support::eventually([&peer] {
        peer.turn();
        return !peer.file.empty();
    }));
    EXPECT_EQ(peer.file, "/tmp/take.wav");
    ASSERT_TRUE(peer.tellFinished());
    std::vector<std::string> heard;
    ASSERT_TRUE(testing_support::eventually([&module, &heard] {
        const std::string message = module.receive();
        if (!message.empty()) {
            heard.push_back(message);
        }
        return heard.size() == 2;
    }));
    EXPECT_EQ(heard, (std::vector<std::string>{"ok", "2;finishedFileEdit;/tmp/take.wav;"}));
}

} // namespace
} // namespace tessera::test
