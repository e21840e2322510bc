// ProjectTimeline: the root of a project. Items are known by the number that the project shows them under, from 1.
#pragma once

#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IProjectTimeline.h"

#include <memory>

namespace tessera::host {

class Project;

class ProjectTimeline final : public HostObject<ProjectTimeline, UnusedSlots<IProjectTimeline>> {
public:
    ProjectTimeline(const std::shared_ptr<HostCore>& core, std::weak_ptr<Project> project);

    void itemStart(std::uint32_t itemId, double* start) override;
    void itemRange(std::uint32_t itemId, double* start, double* end) override;

private:
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    const std::weak_ptr<Project> project_;
};

} // namespace tessera::host
