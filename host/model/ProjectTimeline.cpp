#include "host/model/ProjectTimeline.h"

#include "host/model/Project.h"

#include <utility>

namespace tessera::host {

ProjectTimeline::ProjectTimeline(const std::shared_ptr<HostCore>& core, std::weak_ptr<Project> project)
    : HostObject(core->watch, "ProjectTimeline"), project_(std::move(project)) {}

void ProjectTimeline::itemStart(std::uint32_t itemId, double* start) {
    double end = 0;
    itemRange(itemId, start, &end);
}

void ProjectTimeline::itemRange(std::uint32_t itemId, double* start, double* end) {
    const std::shared_ptr<Project> project = guestMay("itemRange") ? project_.lock() : nullptr;
    if (project == nullptr || start == nullptr || end == nullptr) {
        return;
    }
    if (const std::shared_ptr<Event> event = project->eventByNumber(static_cast<int>(itemId))) {
        *start = event->place().start;
        *end = event->place().end();
    }
}

} // namespace tessera::host
