// ProjectTracker: follows which project is active in the host, and tells its dependents about it by the codes of
// ProjectChange. It joins the host's project list when it is made and leaves it when it goes. Main thread.
#pragma once

#include "foundation/object/FObject.h"
#include "foundation/object/FRefPtr.h"
#include "shell/hostapi/IHostServices.h"
#include "shell/hostapi/IObjectObserver.h"
#include "shell/hostapi/IObjectRegistry.h"
#include "shell/hostapi/IProject.h"
#include "shell/hostapi/IProjectList.h"
#include "shell/hostapi/IProjectListListener.h"
#include "shell/hostapi/IProjectListener.h"
#include "shell/hostapi/IProjectTimeline.h"

namespace tessera {

// Change codes of a ProjectTracker.
namespace ProjectChange {

// Something in the active project, or the project object itself.
inline constexpr std::int32_t object = 1;
// A project has become active, respectively is about to cease being active.
inline constexpr std::int32_t activated = 4;
inline constexpr std::int32_t deactivated = 5;
// The active project's content, as it tells itself.
inline constexpr std::int32_t content = 6;
// The root of the active project's tree is another object, or none.
inline constexpr std::int32_t root = 7;

} // namespace ProjectChange

class ProjectTracker final : public FObject,
                             private IProjectListListener,
                             private IProjectListener,
                             private IObjectObserver {
public:
    // Without a list no project ever becomes active.
    ProjectTracker(IHostServices* services, IProjectList* list);
    ProjectTracker(const ProjectTracker&) = delete;
    ProjectTracker& operator=(const ProjectTracker&) = delete;
    ~ProjectTracker() override;

    // Null when none is active.
    IProject* activeProject() const { return activeProject_; }
    IHostServices* services() const { return services_.get(); }

    FResult queryInterface(const FUIDBytes& uid, void** out) override { return FObject::queryInterface(uid, out); }
    std::uint32_t addRef() override { return addReference(); }
    std::uint32_t release() override { return releaseReference(); }
    // Called by the host about the object of the active project.
    void update(IBaseUnknown* subject, std::int32_t code) override;

private:
    void activated(IProject* project) override;
    void deactivated() override;
    void projectDeactivated(IProject* project) override;
    void projectChanged(IProject* project) override;

    void setRoot(IProjectTimeline* root);
    void leaveActiveProject();
    // How the host's registry is told to begin or to end observing the active project's object.
    using ObserverCall = FResult (IObjectRegistry::*)(IBaseUnknown*, IObjectObserver*);
    void callRegistry(ObserverCall call);

    FRefPtr<IHostServices> services_;
    FRefPtr<IProjectList> list_;
    IProject* activeProject_ = nullptr;
    FRefPtr<IProjectTimeline> activeRoot_;
};

} // namespace tessera
