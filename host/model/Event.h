// Event: what stands on a track: a stretch of an audio clip, or a part with notes. Times are seconds: start on the
// timeline, length, and offset in the clip.
//
// Owned by its track, by the undo history, or by the guest alone as long as it stands nowhere. Main thread.
#pragma once

#include "host/model/AudioPart.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IAudioEvent.h"
#include "shell/hostapi/IMediaAttributes.h"
#include "shell/hostapi/IProjectObject.h"

#include <cstdint>
#include <memory>
#include <string>

namespace tessera::host {

class Track;

// Where an event stands and what it plays of its clip.
struct EventPlace {
    double start = 0;
    double length = 0;
    double offset = 0;

    double end() const { return start + length; }
};

class Event final : public HostObject<Event, UnusedSlots<IProjectObject>, IAudioEvent, IMediaAttributes> {
public:
    // An event without a part is one with notes, which the guest can't edit.
    Event(std::shared_ptr<HostCore> core, std::string name, EventPlace place,
          std::shared_ptr<AudioPart> part = nullptr);

    const std::string& name() const { return name_; }
    bool isAudio() const { return part_ != nullptr; }
    AudioClip* ownClip() const { return part_ == nullptr ? nullptr : part_->ownClip().get(); }
    const std::shared_ptr<AudioPart>& part() const { return part_; }
    const EventPlace& place() const { return place_; }
    void setPlace(const EventPlace& place) { place_ = place; }
    std::uint32_t restrictions() const { return restrictions_; }
    void setRestrictions(std::uint32_t bits) { restrictions_ = bits; }
    std::shared_ptr<Track> track() const { return track_.lock(); }
    void setTrack(const std::shared_ptr<Track>& track) { track_ = track; }

    std::uint32_t state() override;
    IProjectObject* duplicate(std::int64_t unused) override;
    double timelineStart(std::uint64_t scope) override;
    FResult place(double position, double seconds, IUndoStack* undo) override;
    double timelineEnd(std::uint64_t scope) override;
    double clipOffset(std::uint64_t scope) override;
    IProjectObject* parent() override;
    IAudioPart* audioPart() override;
    FResult setAudioPart(std::int64_t unused1, IAudioPart* part, std::int64_t unused2) override;

    // The number that the project shows it under, by which the timeline knows it; 0 while it stands nowhere.
    std::uint32_t itemId() override;

private:
    bool offers(const FUIDBytes& uid) const override { return isAudio() || !(uid == IAudioEvent::iid); }
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }
    // The stretch of the timeline that a scope means for this event.
    EventPlace placeInScope(const char* slot, std::uint64_t scope);
    double frameGuard() const;

    const std::shared_ptr<HostCore> core_;
    const std::string name_;
    EventPlace place_;
    std::shared_ptr<AudioPart> part_;
    double clipSecondsAtPlace_ = 0; // how long the clip was that place_ was made for
    std::uint32_t restrictions_ = 0;
    std::weak_ptr<Track> track_;
};

} // namespace tessera::host
