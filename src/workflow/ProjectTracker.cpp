#include "workflow/ProjectTracker.h"

#include "shell/hostapi/IObjectTest.h"
#include "shell/hostapi/IProjectObject.h"
#include "workflow/HostBorder.h"
#include "workflow/HostServices.h"

namespace tessera {

ProjectTracker::ProjectTracker(IHostServices* services, IProjectList* list) : services_(services), list_(list) {
    if (list_) {
        list_->addListener(this);
    }
}

ProjectTracker::~ProjectTracker() {
    leaveActiveProject();
    if (list_) {
        list_->removeListener(this);
    }
}

void ProjectTracker::update(IBaseUnknown*, std::int32_t code) {
    atHostBorder([&] {
        if (activeProject_ != nullptr) {
            setRoot(activeProject_->root());
        }
        if (code == ProjectChange::object) {
            changed(ProjectChange::object);
        }
    });
}

void ProjectTracker::activated(IProject* project) {
    if (project == nullptr) {
        return;
    }
    atHostBorder([&] {
        activeProject_ = project;
        project->addProjectListener(this);
        callRegistry(&IObjectRegistry::addObserver);
        setRoot(project->root());
        changed(ProjectChange::activated);
    });
}

void ProjectTracker::deactivated() {
    if (activeProject_ == nullptr) {
        return;
    }
    atHostBorder([&] {
        changed(ProjectChange::deactivated);
        leaveActiveProject();
        setRoot(nullptr);
    });
}

void ProjectTracker::projectDeactivated(IProject* project) {
    if (project == activeProject_) {
        deactivated();
    }
}

void ProjectTracker::projectChanged(IProject* project) {
    if (project != nullptr && project == activeProject_) {
        atHostBorder([&] { changed(ProjectChange::content); });
    }
}

void ProjectTracker::setRoot(IProjectTimeline* root) {
    if (activeProject_ != nullptr) {
        const auto test = queryService<IObjectTest>(services_.get());
        if (test && test->compare(activeRoot_.get(), activeProject_->root()) == kResultOk) {
            return;
        }
    }
    activeRoot_ = root;
    changed(ProjectChange::root);
}

void ProjectTracker::leaveActiveProject() {
    if (activeProject_ == nullptr) {
        return;
    }
    callRegistry(&IObjectRegistry::removeObserver);
    activeProject_->removeProjectListener(this);
    activeProject_ = nullptr;
}

void ProjectTracker::callRegistry(ObserverCall call) {
    const auto object = queryFor<IProjectObject>(activeProject_);
    const auto registry = queryService<IObjectRegistry>(services_.get());
    if (object && registry) {
        (registry.get()->*call)(object.get(), this);
    }
}

} // namespace tessera
