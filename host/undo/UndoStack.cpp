#include "host/undo/UndoStack.h"

#include "host/model/Project.h"
#include "host/undo/GuestStep.h"
#include "host/undo/TrackChange.h"

#include <utility>

namespace tessera::host {

void UndoStack::setProject(const std::shared_ptr<Project>& project) {
    open_.clear();
    blocks_.clear();
    next_ = 0;
    project_ = project;
}

void UndoStack::noteChange() {
    if (const std::shared_ptr<Project> project = project_.lock()) {
        project->noteChange();
    }
}

void UndoStack::record(std::unique_ptr<UndoItem> item) {
    open_.push_back(std::move(item));
}

void UndoStack::addEventTo(const std::shared_ptr<Track>& track, const std::shared_ptr<Event>& event) {
    track->add(event);
    record(std::make_unique<TrackChange>(TrackChange::Kind::added, track, event));
}

void UndoStack::removeEventFrom(const std::shared_ptr<Track>& track, const std::shared_ptr<Event>& event) {
    track->remove(*event);
    record(std::make_unique<TrackChange>(TrackChange::Kind::removed, track, event));
}

void UndoStack::commitBlock(const std::string& name) {
    Items items = std::exchange(open_, {});
    for (const auto& item : items) {
        item->commit();
    }
    blocks_.resize(next_);
    blocks_.push_back({name, std::move(items)});
    next_ = blocks_.size();
    noteChange();
}

bool UndoStack::rollBack() {
    if (open_.empty()) {
        return false;
    }
    Items items = std::exchange(open_, {});
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        (*item)->undo();
    }
    noteChange();
    return true;
}

bool UndoStack::undo() {
    if (next_ == 0) {
        return false;
    }
    const Items& items = blocks_[--next_].items;
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        (*item)->undo();
    }
    noteChange();
    return true;
}

bool UndoStack::redo() {
    if (next_ == blocks_.size()) {
        return false;
    }
    for (const auto& item : blocks_[next_++].items) {
        item->redo();
    }
    noteChange();
    return true;
}

void UndoStack::forgetGuest() {
    for (Block& block : blocks_) {
        for (const auto& item : block.items) {
            item->forgetGuest();
        }
    }
}

FResult UndoStack::commit(IProject* project, const char* name) {
    if (!guestMay("commit")) {
        return kResultFailure;
    }
    const std::shared_ptr<Project> open = project_.lock();
    if (open == nullptr || ownObject<Project>(project) != open.get() || name == nullptr) {
        return kInvalidArgument;
    }
    commitBlock(name);
    ++guestCommits_;
    return kResultOk;
}

FResult UndoStack::addEvent(IEventTrack* track, IProjectObject* event) {
    Track* const ownTrack = guestMay("addEvent") ? ownObject<Track>(track) : nullptr;
    Event* const ownEvent = ownTrack == nullptr ? nullptr : ownObject<Event>(event);
    if (ownEvent == nullptr || ownEvent->track() != nullptr) {
        return kResultFalse;
    }
    addEventTo(ownTrack->self(), ownEvent->self());
    return kResultOk;
}

FResult UndoStack::removeEvent(IEventTrack* track, IProjectObject* event) {
    Track* const ownTrack = guestMay("removeEvent") ? ownObject<Track>(track) : nullptr;
    Event* const ownEvent = ownTrack == nullptr ? nullptr : ownObject<Event>(event);
    if (ownEvent == nullptr || !ownTrack->holds(*ownEvent)) {
        return kResultFalse;
    }
    removeEventFrom(ownTrack->self(), ownEvent->self());
    return kResultOk;
}

FResult UndoStack::addStep(IUndoStep* step) {
    if (!guestMay("addStep") || step == nullptr) {
        return kInvalidArgument;
    }
    record(std::make_unique<GuestStep>(watch(), step));
    return kResultOk;
}

} // namespace tessera::host
