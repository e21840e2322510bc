#include "workflow/EditSession.h"

#include "foundation/messages/UpdateHandler.h"
#include "shell/hostapi/IAudioClipFactory.h"
#include "shell/hostapi/IAudioEvent.h"
#include "shell/hostapi/IAudioStream.h"
#include "shell/hostapi/IFolderNode.h"
#include "shell/hostapi/IPool.h"
#include "shell/hostapi/IStreamEditTarget.h"
#include "workflow/AudioCopier.h"
#include "workflow/AudioSplice.h"
#include "workflow/EventSwap.h"
#include "workflow/ExchangeFolder.h"
#include "workflow/HostSelection.h"
#include "workflow/HostServices.h"
#include "workflow/UndoBlock.h"
#include "workflow/UndoReplacement.h"

namespace tessera {

namespace {

constexpr char kUndoName[] = "Edit in Tessera";
// In one language, like all texts of the module.
constexpr char kStreamUndoName[] = "Mit editAudioStream modifiziert!";

// A new audio part that plays the file, set on the event; null when one of the steps fails.
FRefPtr<IAudioPart> attachClip(IHostFile* file, IProjectObject& event) {
    const auto clip = openClip(hostServices(), file);
    const auto part = queryService<IAudioClipFactory>();
    const auto audioEvent = queryFor<IAudioEvent>(&event);
    if (!clip || !part || !part->bind(clip.get()) || !audioEvent ||
        audioEvent->setAudioPart(0, part.get(), 0) != kResultOk) {
        return {};
    }
    return FRefPtr<IAudioPart>(part.get());
}

bool addToPool(IProject* project, IAudioPart& part) {
    IPool* pool = project == nullptr ? nullptr : project->pool();
    const auto node = queryFor<IFolderNode>(&part);
    return pool != nullptr && node && pool->add(node.get(), 0) == kResultOk;
}

} // namespace

EditSession& EditSession::instance() {
    static EditSession session;
    return session;
}

void EditSession::start(IPeerLink* peerLink) {
    UpdateHandler::getInstance(true);
    const auto list = queryService<IProjectList>();
    const auto tracker = FRefPtr<ProjectTracker>::adopt(new ProjectTracker(hostServices(), list.get()));
    watcher_.attach(tracker.get());
    tracker_ = tracker;
    peerLink_ = peerLink;
}

void EditSession::stop() {
    peerLink_ = nullptr;
    if (editedFile_) {
        abandonEdit();
    }
    watcher_.attach(nullptr);
    // The host may be gone by the time that this session is: nothing of it is kept.
    tracker_.reset();
}

IHostFile* EditSession::beginEdit() {
    if (editedFile_) {
        if (peerLink_ != nullptr) {
            peerLink_->cancelAudioFile(editedFile_.get());
        }
        abandonEdit();
    }
    const FRefPtr<IHostFile> file = prepareFile();
    if (peerLink_ != nullptr) {
        peerLink_->openAudioFile(file.get());
    }
    watcher_.setCallback([this] { onEventGone(); });
    return file.get();
}

FResult EditSession::finishEdit(std::string_view) {
    const FRefPtr<IProjectObject> oldEvent(watcher_.event());
    if (!oldEvent) {
        return kResultFalse;
    }
    const auto newEvent = FRefPtr<IProjectObject>::adopt(oldEvent->duplicate(0));
    if (!newEvent || mergeAudio(*newEvent) != kResultOk) {
        return kResultFalse;
    }
    const auto step = FRefPtr<UndoReplacement>::adopt(new UndoReplacement(
        newEvent.get(), oldEvent.get(), [this](IProjectObject* standing) { watcher_.watch(standing); }));
    UndoBlock block(activeProject(), kUndoName);
    const FResult result = EventSwap(activeProject(), block.stack(), *step).swap(*newEvent, *oldEvent);
    if (result != kResultOk) {
        block.revoke();
    }
    return result;
}

void EditSession::abandonEdit() {
    watcher_.watch(nullptr);
    editedFile_.reset();
    rangeStart_ = 0;
    rangeFrames_ = 0;
}

FResult EditSession::replaceStream(IStreamEditTarget& target) {
    const auto clip = openClip(hostServices(), editedFile_.get());
    const FRefPtr<IAudioStream> stream(clip ? clip->stream() : nullptr);
    if (!stream || !stream->open()) {
        return kResultFalse;
    }
    UndoBlock block(activeProject(), kStreamUndoName);
    const FResult result = target.replaceFrames(rangeStart_, rangeFrames_, stream.get(), clip.get(), block.stack());
    if (result != kResultOk) {
        block.revoke();
    }
    return result;
}

FRefPtr<IHostFile> EditSession::prepareFile() {
    const HostSelection selection(hostServices());
    SelectedItem item = selection.firstSelectedEvent();
    if (!item.object) {
        return {};
    }
    watcher_.watch(item.object.get());
    // A stretch takes precedence over the event that it lies in; what is watched is the event in any case.
    const auto ranges = selection.selectedRanges();
    takeUp(ranges.empty() ? item : ranges.front());
    return editedFile_;
}

void EditSession::takeUp(const SelectedItem& item) {
    const CopyResult copy = AudioCopier(hostServices(), exchangeFolder()).copyItem(item);
    editedFile_ = copy.file;
    rangeStart_ = copy.startFrame;
    rangeFrames_ = copy.frames;
}

FResult EditSession::mergeAudio(IProjectObject& newEvent) {
    const FRefPtr<IHostFile> spliced = spliceFile(newEvent);
    const auto part = spliced ? attachClip(spliced.get(), newEvent) : FRefPtr<IAudioPart>();
    return part && addToPool(activeProject(), *part) ? kResultOk : kResultFalse;
}

FRefPtr<IHostFile> EditSession::spliceFile(IProjectObject& newEvent) {
    // The whole original, beside the edited file. Its writer is let go before anybody reads it.
    FRefPtr<IHostFile> whole = AudioCopier(hostServices(), exchangeFolder()).copyRange(newEvent, 0, 0).file;
    return AudioSplice(hostServices(), std::move(whole), editedFile_)
        .spliceInto(projectAudioFolder(), rangeStart_, rangeFrames_);
}

FRefPtr<IHostFile> EditSession::projectAudioFolder() const {
    IHostFile* projectFolder = activeProject() == nullptr ? nullptr : activeProject()->folder();
    FRefPtr<IHostFile> folder;
    if (projectFolder == nullptr || projectFolder->clone(folder.receive()) != kResultOk) {
        static_cast<void>(folder.detach());
        return {};
    }
    return folder && folder->append(u"Audio", 1) == kResultOk ? folder : FRefPtr<IHostFile>();
}

void EditSession::onEventGone() {
    if (peerLink_ != nullptr) {
        peerLink_->cancelAudioFile(editedFile_.get());
    }
    abandonEdit();
}

} // namespace tessera
