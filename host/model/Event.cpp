#include "host/model/Event.h"

#include "host/model/Project.h"
#include "host/model/Track.h"
#include "host/undo/PlaceChange.h"
#include "host/undo/UndoStack.h"

#include <algorithm>
#include <utility>

namespace tessera::host {

Event::Event(std::shared_ptr<HostCore> core, std::string name, EventPlace place, std::shared_ptr<AudioPart> part)
    : HostObject(core->watch, "Event"),
      core_(std::move(core)),
      name_(std::move(name)),
      place_(place),
      part_(std::move(part)) {
    if (const AudioClip* clip = ownClip()) {
        clipSecondsAtPlace_ = clip->seconds();
    }
}

std::uint32_t Event::state() {
    constexpr std::uint32_t kNoLongerInProject = 2;
    return guestMay("state") && track() == nullptr ? kNoLongerInProject : 0;
}

IProjectObject* Event::duplicate(std::int64_t) {
    if (!guestMay("duplicate")) {
        return nullptr;
    }
    const auto copy = std::make_shared<Event>(core_, name_, place_, part_);
    copy->restrictions_ = restrictions_;
    copy->addRef();
    return copy.get();
}

EventPlace Event::placeInScope(const char* slot, std::uint64_t scope) {
    if (!core_->scopes.isKnown(scope)) {
        reportMisuse(slot, "the scope is none that the selection gave");
        return place_;
    }
    const std::optional<TimeRange> range = core_->scopes.range(scope);
    if (!range) {
        return place_;
    }
    const double start = std::clamp(range->start, place_.start, place_.end());
    const double end = std::clamp(range->end, start, place_.end());
    return {start, end - start, place_.offset + (start - place_.start)};
}

// Whoever turns our seconds into frames cuts off, and a time that is the quotient of a frame number may come out a hair
// below it. A thousandth of a frame on top keeps the number and is nobody's loss.
double Event::frameGuard() const {
    constexpr double kGuardFrames = 1.0 / 1024;
    const AudioClip* const clip = ownClip();
    return clip == nullptr ? 0 : kGuardFrames / clip->format().sampleRate;
}

double Event::timelineStart(std::uint64_t scope) {
    return guestMay("timelineStart") ? placeInScope("timelineStart", scope).start : 0;
}

double Event::timelineEnd(std::uint64_t scope) {
    return guestMay("timelineEnd") ? placeInScope("timelineEnd", scope).end() + frameGuard() : 0;
}

double Event::clipOffset(std::uint64_t scope) {
    return guestMay("clipOffset") && isAudio() ? placeInScope("clipOffset", scope).offset + frameGuard() : 0;
}

// The guest tells how long the audio is that the event plays from now. The event keeps its offset in it, and grows or
// shrinks by as much as its clip did, so that what it plays ends at the same sound as before.
FResult Event::place(double position, double seconds, IUndoStack* undo) {
    if (!guestMay("place")) {
        return kResultFailure;
    }
    if (track() == nullptr || !(seconds >= 0)) {
        return kResultFalse;
    }
    EventPlace changed = place_;
    changed.start = position;
    if (isAudio()) {
        const double grown = place_.length + (seconds - clipSecondsAtPlace_);
        changed.length = std::clamp(grown, 0.0, std::max(0.0, seconds - place_.offset));
        clipSecondsAtPlace_ = seconds;
    } else {
        changed.length = seconds;
    }
    auto change = std::make_unique<PlaceChange>(self(), place_, changed);
    change->redo();
    if (UndoStack* const stack = ownObject<UndoStack>(undo)) {
        stack->record(std::move(change));
    }
    return kResultOk;
}

IProjectObject* Event::parent() {
    return guestMay("parent") ? track().get() : nullptr;
}

IAudioPart* Event::audioPart() {
    return guestMay("audioPart") ? part_.get() : nullptr;
}

FResult Event::setAudioPart(std::int64_t, IAudioPart* part, std::int64_t) {
    if (!guestMay("setAudioPart")) {
        return kResultFailure;
    }
    AudioPart* const own = ownObject<AudioPart>(part);
    if (own == nullptr || own->ownClip() == nullptr || !isAudio()) {
        return kInvalidArgument;
    }
    part_ = own->self();
    return kResultOk;
}

std::uint32_t Event::itemId() {
    const std::shared_ptr<Track> stands = guestMay("itemId") ? track() : nullptr;
    const std::shared_ptr<Project> project = stands == nullptr ? nullptr : stands->project();
    return project == nullptr ? 0 : static_cast<std::uint32_t>(project->numberOf(*this));
}

} // namespace tessera::host
