#include "host/model/Project.h"

#include "host/objects/GuestCall.h"

#include <algorithm>
#include <utility>

namespace tessera::host {

std::shared_ptr<Project> Project::create(const std::shared_ptr<HostCore>& core, const std::string& folder) {
    auto project = std::make_shared<Project>(core, folder);
    project->root_ = std::make_shared<ProjectTimeline>(core, project);
    return project;
}

Project::Project(std::shared_ptr<HostCore> core, const std::string& folder)
    : HostObject(core->watch, "Project"),
      core_(core),
      folder_(std::make_shared<HostFile>(core, folder, true)),
      pool_(std::make_shared<AudioPool>(core)) {}

void Project::setFilePath(const std::string& path) {
    file_ = std::make_shared<HostFile>(core_, path);
}

std::shared_ptr<Track> Project::addTrack(const std::string& name) {
    tracks_.push_back(std::make_shared<Track>(core_, name, self()));
    return tracks_.back();
}

std::vector<std::shared_ptr<Event>> Project::events() const {
    std::vector<std::shared_ptr<Event>> result;
    for (const auto& track : tracks_) {
        const auto events = track->eventsByStart();
        result.insert(result.end(), events.begin(), events.end());
    }
    return result;
}

std::shared_ptr<Event> Project::eventByNumber(int number) const {
    const auto all = events();
    return number < 1 || number > static_cast<int>(all.size()) ? nullptr : all[static_cast<std::size_t>(number - 1)];
}

int Project::numberOf(const Event& event) const {
    const auto all = events();
    const auto found = std::find_if(all.begin(), all.end(), [&](const auto& other) { return other.get() == &event; });
    return found == all.end() ? 0 : static_cast<int>(found - all.begin()) + 1;
}

double Project::end() const {
    double end = 0;
    for (const auto& track : tracks_) {
        end = std::max(end, track->end());
    }
    return end;
}

// A listener may take itself or another one out while it is told.
void Project::tellListeners() {
    const std::vector<IProjectListener*> told = listeners_;
    for (IProjectListener* listener : told) {
        if (std::find(listeners_.begin(), listeners_.end(), listener) != listeners_.end()) {
            callGuest(*watch(), "IProjectListener.projectChanged", [&] { listener->projectChanged(this); });
        }
    }
}

double Project::positionOf(IProjectObject* event) {
    const Event* const own = guestMay("positionOf") ? ownObject<Event>(event) : nullptr;
    return own == nullptr ? 0 : own->place().start;
}

FResult Project::addProjectListener(IProjectListener* listener) {
    if (!guestMay("addProjectListener") || listener == nullptr) {
        return kInvalidArgument;
    }
    listeners_.push_back(listener);
    return kResultOk;
}

FResult Project::removeProjectListener(IProjectListener* listener) {
    return guestMayLate("removeProjectListener") && std::erase(listeners_, listener) > 0 ? kResultOk : kResultFalse;
}

IProjectObject* Project::duplicate(std::int64_t) {
    return nullptr;
}

double Project::timelineStart(std::uint64_t) {
    return 0;
}

FResult Project::place(double, double, IUndoStack*) {
    return kResultFalse;
}

double Project::timelineEnd(std::uint64_t) {
    return guestMay("timelineEnd") ? end() : 0;
}

double Project::clipOffset(std::uint64_t) {
    return 0;
}

IProjectObject* Project::parent() {
    return nullptr;
}

IEventTrack* Project::trackOf(IEventTrack* eventTrack) {
    Track* const own = guestMay("trackOf") ? ownObject<Track>(eventTrack) : nullptr;
    return own != nullptr && own->project().get() == this ? own : nullptr;
}

} // namespace tessera::host
