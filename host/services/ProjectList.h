// ProjectList: the open projects, of which this host has one at most, and who wants to know which is active. Main
// thread.
#pragma once

#include "host/model/Project.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IProjectList.h"
#include "shell/hostapi/IProjectListListener.h"

#include <memory>
#include <vector>

namespace tessera::host {

class ProjectList final : public HostObject<ProjectList, UnusedSlots<IProjectList>> {
public:
    explicit ProjectList(const std::shared_ptr<HostCore>& core) : HostObject(core->watch, "ProjectList") {}

    // A guest follows the projects for as long as its singletons live, which is to the end of the process.
    bool mayOutliveGuest() const override { return true; }

    const std::shared_ptr<Project>& active() const { return active_; }
    // Tells the listeners that the old one goes, and then that the new one is there. Either may be null.
    void setActive(std::shared_ptr<Project> project);

    FResult addListener(IProjectListListener* listener) override;
    FResult removeListener(IProjectListListener* listener) override;

private:
    template <class Operation>
    void tell(const char* name, Operation operation);
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    std::shared_ptr<Project> active_;
    std::vector<IProjectListListener*> listeners_;
};

} // namespace tessera::host
