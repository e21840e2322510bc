#include "link/PeerController.h"

#include "discovery/identity/SystemInfo.h"
#include "discovery/processes/ChildProcess.h"
#include "link/IncomingMessages.h"
#include "link/PeerLocation.h"
#include "link/WireMessage.h"
#include "platform/WindowActivation.h"
#include "workflow/EditSession.h"
#include "workflow/HostText.h"

namespace tessera {

namespace {

constexpr char16_t kPeerWindowClass[] = u"Qt5QWindowIcon";

} // namespace

PeerController& PeerController::instance() {
    static PeerController controller;
    return controller;
}

PeerController::PeerController()
    : installedPeers_(AudioExportScriptList().select(ScriptKind::peers)),
      peer_(choosePeer(installedPeers_)),
      link_(LinkSocket::defaultAddress) {}

void PeerController::openAudioFile(IHostFile* file) {
    openInPeer(pathOf(file));
}

IHostFile* PeerController::editSelection() {
    return EditSession::instance().beginEdit();
}

void PeerController::cancelAudioFile(IHostFile* file) {
    sendCancelFileEdit(pathOf(file));
}

std::int32_t PeerController::suspendDriver(const char16_t* text) {
    return sendSuspendDriver(utf8Of(text));
}

bool PeerController::openLink() {
    if (link_.isOpen()) {
        return true;
    }
    // Not before a peer is there: to ask the system's list of users for a name would hold up every start of the host.
    link_.setAddress(LinkSocket::userAddress(systemInfo().userName));
    link_.open(LinkSide::Bind);
    if (idlePump_) {
        idlePump_->stop();
    }
    idlePump_ = FRefPtr<IdlePump>::adopt(new IdlePump([this] { pollOnce(); }));
    return true;
}

void PeerController::closeLink() {
    if (!link_.isOpen()) {
        return;
    }
    // The object stays until the next open: where this runs inside the host's idle calls, a host that walks over a copy
    // of its clients calls it once more in this round.
    if (idlePump_) {
        idlePump_->stop();
    }
    link_.close();
}

void PeerController::stopPolling() {
    if (idlePump_) {
        idlePump_->stop();
    }
}

void PeerController::sendConnectionInfo(std::string_view hostName, std::string_view hostVersion, bool connected) {
    if (!link_.isOpen()) {
        return;
    }
    // By way of 16-bit text, as the host has its name: it ends at the first zero.
    const std::string name = utf8Of(wideOf(hostName).c_str());
    link_.sendAndReceive(writeMessage({WireVerb::sendConnectionInfo, name, hostVersion, connected ? "true" : "false"}),
                         SendMode::Blocking);
}

void PeerController::sendCancelFileEdit(std::string_view path) {
    if (link_.isOpen()) {
        link_.send(writeMessage({WireVerb::cancelFileEdit, path}), SendMode::NonBlocking);
    }
}

void PeerController::sendRenderedFile(std::string_view path) {
    if (link_.isOpen()) {
        link_.send(writeMessage({WireVerb::renderedFile, path}), SendMode::NonBlocking);
    }
}

std::int32_t PeerController::sendSuspendDriver(std::string_view text) {
    if (link_.isOpen()) {
        link_.sendAndReceive(writeMessage({WireVerb::suspendKiteDriver, text}), SendMode::NonBlocking);
    }
    return 0;
}

void PeerController::openInPeer(std::string_view path) {
    if (link_.isOpen()) {
        raisePeer();
        link_.send(writeMessage({WireVerb::openFile, path}), SendMode::NonBlocking);
    } else {
        // The path is on the command line, so no message follows when the peer has come up.
        launchPeer(path);
    }
}

void PeerController::pollOnce() {
    if (!link_.isOpen()) {
        return;
    }
    const std::string message = link_.receive();
    if (message.empty()) {
        return;
    }
    const FieldList fields = readMessage(message);
    if (hasCurrentVersion(fields)) {
        handleMessage(fields, link_);
    }
}

void PeerController::raisePeer() const {
    platform::raiseWindow(kPeerWindowClass);
}

void PeerController::launchPeer(std::string_view path) const {
    if (peer_.version.major == 0) {
        return;
    }
    // The process goes on when this object goes; nobody waits for it.
    ChildProcess process(peer_.path, nullptr, ChildProcess::kKeepRunning);
    process.start(launchArguments(peer_.arguments, path), 0);
}

} // namespace tessera
