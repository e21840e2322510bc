// PlaceChange: an event moved, or plays another stretch of its clip.
#pragma once

#include "host/model/Event.h"
#include "host/undo/UndoItem.h"

#include <memory>
#include <utility>

namespace tessera::host {

class PlaceChange final : public UndoItem {
public:
    PlaceChange(std::shared_ptr<Event> event, EventPlace before, EventPlace after)
        : event_(std::move(event)), before_(before), after_(after) {}

    void undo() override { event_->setPlace(before_); }
    void redo() override { event_->setPlace(after_); }

private:
    const std::shared_ptr<Event> event_;
    const EventPlace before_;
    const EventPlace after_;
};

} // namespace tessera::host
