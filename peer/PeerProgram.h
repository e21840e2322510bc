// PeerProgram: the stand-in peer as a running process: registry, link, editor and main loop around one PeerExchange.
//
// Everything runs on the thread that calls run(), but for the editor, which has one of its own. That loop polls the
// link every few milliseconds, so the messages that the host waits on are answered at once.
#pragma once

#include "discovery/registry/ServiceRecord.h"
#include "foundation/messages/FIdleTimer.h"
#include "link/LinkSocket.h"
#include "peer/EditJob.h"
#include "peer/EditorCommand.h"
#include "peer/HandOver.h"
#include "peer/PeerExchange.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessera::peer {

// When the program ends by itself; an interrupt ends it in any case.
enum class StayMode {
    UntilInterrupted, // started by hand
    WhileHostLives,   // started by the module for one of its files
    ForOneEdit,
};

class PeerProgram final : public IPeerActions {
public:
    PeerProgram(EditorCommand command, StayMode stay);
    ~PeerProgram();

    // The files are to be opened as soon as the program is up; UTF-8. The exit code: 0, or 1 when there is nothing to
    // do but say why.
    int run(const std::vector<std::string>& files);

    void send(std::string_view message) override;
    void startEdit(const std::string& path) override;
    void stopEdit() override;
    int countFilesBeside(const std::string& path) override;
    void say(const std::string& line) override;

private:
    int handOver(const std::vector<std::string>& files);
    bool open(const std::vector<std::string>& files);
    void close();
    void hostListed(const ServiceRecord& host);
    void hostUnlisted(const ServiceRecord& host);
    void checkUnlistedHost();
    int loop();
    void turn(std::int64_t now);
    void pollEdit(std::int64_t now);
    bool wantsToLeave() const;

    const EditorCommand command_;
    const StayMode stay_;
    const std::string workFolder_;
    HandOver handOver_;
    LinkSocket link_;
    FIdleTimer idleTimer_;
    PeerExchange exchange_{*this};
    std::unique_ptr<EditJob> job_;
    // Given up, and still busy with a long file.
    std::vector<std::unique_ptr<EditJob>> stoppedJobs_;
    int jobs_ = 0;
    bool registered_ = false;
    bool hostSeen_ = false;
    bool hostGone_ = false;
    // A linked host that the registry watches no more.
    std::optional<ServiceRecord> unlistedHost_;
    std::int64_t idleSince_ = 0;
};

} // namespace tessera::peer
