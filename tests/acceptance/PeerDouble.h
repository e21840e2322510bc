// PeerDouble: the program at the other end, as far as the module can see it: a record in the registry's folder and a
// connected link socket. It speaks the wire and nothing else of ours; a thread of its own answers what has to be
// answered and edits what it is given, as a quick user would.
#pragma once

#include "link/LinkSocket.h"
#include "link/WireMessage.h"
#include "platform/Identity.h"
#include "platform/Processes.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace tessera::acceptance {

class PeerDouble {
public:
    // What it does with a file that it is to open. True: the file holds the result.
    using Editor = std::function<bool(const std::string& path)>;

    explicit PeerDouble(Editor editor) : editor_(std::move(editor)) {
        writeRecord();
        thread_ = std::thread([this] { run(); });
    }
    PeerDouble(const PeerDouble&) = delete;
    PeerDouble& operator=(const PeerDouble&) = delete;
    ~PeerDouble() {
        leaving_ = true;
        thread_.join();
        std::error_code ignored;
        std::filesystem::remove(record_, ignored);
    }

    // Sent as soon as the peer has been greeted.
    void say(const std::string& message) {
        const std::lock_guard guard(lock_);
        outgoing_.push_back(message);
    }
    std::vector<std::string> heard() const {
        const std::lock_guard guard(lock_);
        return heard_;
    }
    bool hasHeard(const std::string& message) const {
        const std::vector<std::string> all = heard();
        return std::find(all.begin(), all.end(), message) != all.end();
    }
    // The first message with that verb; empty when there was none.
    std::string heardVerb(const std::string& verb) const {
        for (const std::string& message : heard()) {
            if (message.starts_with("2;" + verb + ";")) {
                return message;
            }
        }
        return {};
    }

private:
    // The three lines of a service's record: the program's name, its process id, the type. This process is alive and is
    // not the module's own service, which is all that is asked.
    void writeRecord() {
        const std::filesystem::path folder = std::filesystem::temp_directory_path() / "Marlgrove" / "ServiceDiscovery";
        std::filesystem::create_directories(folder);
        record_ = folder / "com.marlgrove.tessera";
        std::ofstream(record_) << platform::ownBaseName() << "\n" << platform::ownProcessId() << "\ntesxcon_nanomsg\n";
    }

    void run() {
        LinkSocket socket(LinkSocket::userAddress(platform::userName()));
        socket.open(LinkSide::Connect);
        bool isGreeted = false;
        while (!leaving_) {
            const std::string message = socket.receive();
            if (!message.empty()) {
                take(socket, message);
                isGreeted = isGreeted || message.starts_with("2;sendConnectionInfo;");
            }
            if (isGreeted) {
                sendOutgoing(socket);
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        socket.close();
    }

    void take(LinkSocket& socket, const std::string& message) {
        {
            const std::lock_guard guard(lock_);
            heard_.push_back(message);
        }
        const FieldList fields = readMessage(message);
        if (fields.size() < 3) {
            return;
        }
        if (fields[1] == WireVerb::sendConnectionInfo || fields[1] == WireVerb::suspendKiteDriver) {
            socket.send("ok", SendMode::Blocking);
        } else if (fields[1] == WireVerb::openFile) {
            const std::string_view verb = editor_(fields[2]) ? WireVerb::finishedFileEdit : WireVerb::cancelFileEdit;
            say(writeMessage({verb, fields[2]}));
        }
    }

    void sendOutgoing(LinkSocket& socket) {
        std::vector<std::string> sending;
        {
            const std::lock_guard guard(lock_);
            sending.swap(outgoing_);
        }
        for (const std::string& message : sending) {
            socket.send(message, SendMode::Blocking);
        }
    }

    const Editor editor_;
    std::filesystem::path record_;
    mutable std::mutex lock_; // guards the two below
    std::vector<std::string> heard_;
    std::vector<std::string> outgoing_;
    std::atomic<bool> leaving_ = false;
    std::thread thread_;
};

} // namespace tessera::acceptance
