// PeerController: stands for the peer in this process: which one is installed, the one socket to it, every message that
// goes to it, and what is done about those that come.
//
// Whether the link is open is decided by service discovery alone: the service opens it when the peer is found and
// closes it when the peer is lost. The peer is never asked for its state, nothing is retried, and nothing is reported.
// One per process, made at first use, which reads the folder of installed peers. Main thread: a wait for an answer
// blocks it for at most 4,000 ms in the send and 4,000 ms in the receive.
#pragma once

#include "exportscripts/AudioExportScriptList.h"
#include "foundation/object/FRefPtr.h"
#include "link/IdlePump.h"
#include "link/LinkSocket.h"
#include "workflow/IPeerLink.h"

#include <string_view>

namespace tessera {

class PeerController final : public IPeerLink {
public:
    static PeerController& instance();

    // Nothing is opened yet.
    PeerController();
    PeerController(const PeerController&) = delete;
    PeerController& operator=(const PeerController&) = delete;
    ~PeerController() = default;

    bool isPeerAvailable() override { return !installedPeers_.isEmpty() || link_.isOpen(); }
    void openAudioFile(IHostFile* file) override;
    IHostFile* editSelection() override;
    void cancelAudioFile(IHostFile* file) override;
    std::int32_t suspendDriver(const char16_t* text) override;

    // Binds the socket and reads it at the host's idle calls from then on. True in every case: a failed bind shows in
    // the line that the socket prints, and what is sent later goes nowhere.
    bool openLink();
    void closeLink();
    // For the end of the service: no idle call comes here any more, not even where a bind has failed and there is no
    // link to close.
    void stopPolling();
    bool isLinkOpen() const { return link_.isOpen(); }

    // Texts are UTF-8. On a closed link nothing happens. The first waits for an answer, which is dropped, and so does
    // the last.
    void sendConnectionInfo(std::string_view hostName, std::string_view hostVersion, bool connected);
    void sendCancelFileEdit(std::string_view path);
    void sendRenderedFile(std::string_view path);
    std::int32_t sendSuspendDriver(std::string_view text);

    // Shows the file in the peer: over an open link, otherwise by starting the peer with it.
    void openInPeer(std::string_view path);

    // Handles one message, if there is one. A message of another format or with an unknown verb is dropped; one that is
    // too short throws as fieldText does.
    void pollOnce();

private:
    void raisePeer() const;
    void launchPeer(std::string_view path) const;

    AudioExportScriptList installedPeers_;
    // The chosen one; of version 0 if none is known.
    AudioExportScript peer_;
    LinkSocket link_;
    // Runs while the link is open.
    FRefPtr<IdlePump> idlePump_;
};

} // namespace tessera
