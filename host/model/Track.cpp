#include "host/model/Track.h"

#include "host/model/Project.h"

#include <algorithm>
#include <utility>

namespace tessera::host {

Track::Track(std::shared_ptr<HostCore> core, std::string name, std::weak_ptr<Project> project)
    : HostObject(core->watch, "Track"), name_(std::move(name)), project_(std::move(project)) {}

std::vector<std::shared_ptr<Event>> Track::eventsByStart() const {
    std::vector<std::shared_ptr<Event>> sorted = events_;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return a->place().start < b->place().start; });
    return sorted;
}

bool Track::holds(const Event& event) const {
    return event.track().get() == this;
}

double Track::end() const {
    double end = 0;
    for (const auto& event : events_) {
        end = std::max(end, event->place().end());
    }
    return end;
}

void Track::add(const std::shared_ptr<Event>& event) {
    events_.push_back(event);
    event->setTrack(self());
}

void Track::remove(Event& event) {
    event.setTrack(nullptr);
    std::erase_if(events_, [&](const auto& held) { return held.get() == &event; });
}

IProjectObject* Track::duplicate(std::int64_t) {
    return nullptr;
}

double Track::timelineStart(std::uint64_t) {
    return 0;
}

FResult Track::place(double, double, IUndoStack*) {
    return kResultFalse;
}

double Track::timelineEnd(std::uint64_t) {
    return guestMay("timelineEnd") ? end() : 0;
}

double Track::clipOffset(std::uint64_t) {
    return 0;
}

IProjectObject* Track::parent() {
    return guestMay("parent") ? project().get() : nullptr;
}

} // namespace tessera::host
