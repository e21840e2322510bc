// EditSession: the exchange of one audio event with the peer.
//
// The road: beginEdit copies the audio of the selected event, or of the stretch that is selected in it, into a file of
// the exchange folder and has the peer open it. While the user works there, the event is watched: if it goes, so does
// the edit. finishEdit splices the edited file into a new copy of the original audio and puts a new event with it in
// the place of the old one, as one entry of the host's undo history. The session stays open then: the user may save
// again, and the next finishEdit replaces the event that stands there now.
//
// One per process, one edit at a time: a new one gives the earlier one up. Everything runs on the host's main thread,
// and copying blocks it. No failure is shown to anybody; the project is untouched by one, and no file is ever deleted.
#pragma once

#include "workflow/EventWatcher.h"
#include "workflow/IPeerLink.h"

#include <cstdint>
#include <string_view>

namespace tessera {

struct IStreamEditTarget;
struct SelectedItem;

class EditSession {
public:
    static EditSession& instance();

    EditSession() = default;
    EditSession(const EditSession&) = delete;
    EditSession& operator=(const EditSession&) = delete;

    // Follows the host's projects from now on. The link outlives stop(). May be called again.
    virtual void start(IPeerLink* peerLink);
    // Gives an open edit up without a word to the peer, and lets go of the host.
    virtual void stop();
    // The file given to the peer, which stays the session's, or null. The peer is asked to open it either way.
    virtual IHostFile* beginEdit();
    // Takes the edited audio back. The path isn't used: what was given out is what comes back. 0 on success, also when
    // the host refused to swap the events; 1 if no event is watched or the audio couldn't be made.
    virtual FResult finishEdit(std::string_view path);
    // Ends the edit; the project stays as it is and nothing is sent.
    virtual void abandonEdit();
    virtual ~EditSession() = default;

    // Another way back, for hosts that replace frames inside an event: gives the edited frames to the target and makes
    // an undo entry of it. The target's answer; 1 if there is no file to read.
    FResult replaceStream(IStreamEditTarget& target);

private:
    FRefPtr<IHostFile> prepareFile();
    void takeUp(const SelectedItem& item);
    // Makes the audio of the new event. 0 when it plays the spliced file and the pool knows of it.
    FResult mergeAudio(IProjectObject& newEvent);
    FRefPtr<IHostFile> spliceFile(IProjectObject& newEvent);
    FRefPtr<IHostFile> projectAudioFolder() const;
    void onEventGone();
    IProject* activeProject() const { return tracker_ ? tracker_->activeProject() : nullptr; }

    FRefPtr<ProjectTracker> tracker_;
    EventWatcher watcher_;
    FRefPtr<IHostFile> editedFile_;
    // The edited range, in frames of the original audio.
    std::int64_t rangeStart_ = 0;
    std::int64_t rangeFrames_ = 0;
    IPeerLink* peerLink_ = nullptr;
};

} // namespace tessera
