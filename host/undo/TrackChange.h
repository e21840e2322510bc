// TrackChange: an event came to a track, or left it.
#pragma once

#include "host/model/Event.h"
#include "host/model/Track.h"
#include "host/undo/UndoItem.h"

#include <memory>
#include <utility>

namespace tessera::host {

class TrackChange final : public UndoItem {
public:
    enum class Kind { added, removed };

    TrackChange(Kind kind, std::shared_ptr<Track> track, std::shared_ptr<Event> event)
        : kind_(kind), track_(std::move(track)), event_(std::move(event)) {}

    void undo() override { kind_ == Kind::added ? track_->remove(*event_) : track_->add(event_); }
    void redo() override { kind_ == Kind::added ? track_->add(event_) : track_->remove(*event_); }

private:
    const Kind kind_;
    const std::shared_ptr<Track> track_;
    const std::shared_ptr<Event> event_;
};

} // namespace tessera::host
