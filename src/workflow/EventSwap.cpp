#include "workflow/EventSwap.h"

#include "shell/hostapi/IAudioClip.h"
#include "shell/hostapi/IEventOwner.h"
#include "shell/hostapi/IEventTrack.h"
#include "shell/hostapi/IUndoTarget.h"
#include "workflow/EventClip.h"
#include "workflow/EventTree.h"

namespace tessera {

namespace {

IEventTrack* trackOf(IProjectObject& event) {
    const auto owner = findAbove<IEventOwner>(&event);
    const auto track = findAbove<IEventTrack>(&event);
    return owner && track ? owner->trackOf(track.get()) : nullptr;
}

double secondsOf(IProjectObject& event) {
    IAudioClip* clip = clipOf(event);
    return clip == nullptr ? 0 : static_cast<double>(clip->frames()) / static_cast<double>(clip->sampleRate());
}

} // namespace

FResult EventSwap::swap(IProjectObject& newEvent, IProjectObject& oldEvent) {
    addStep();
    IEventTrack* track = trackOf(oldEvent);
    if (undo_ == nullptr || track == nullptr || undo_->removeEvent(track, &oldEvent) != kResultOk ||
        undo_->addEvent(track, &newEvent) != kResultOk) {
        return kResultOk;
    }
    return place(newEvent, oldEvent);
}

void EventSwap::addStep() {
    if (const auto target = queryFor<IUndoTarget>(undo_)) {
        target->addStep(&step_);
    }
}

FResult EventSwap::place(IProjectObject& newEvent, IProjectObject& oldEvent) {
    const double position = project_ == nullptr ? 0 : project_->positionOf(&oldEvent);
    return newEvent.place(position, secondsOf(newEvent), undo_);
}

} // namespace tessera
