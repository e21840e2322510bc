// EventWatcher: follows the event whose audio is being edited, and calls back once when it disappears: when it is taken
// out of its project, or the project with it. Main thread.
#pragma once

#include "shell/hostapi/IProjectObject.h"
#include "workflow/ProjectTracker.h"

#include <functional>

namespace tessera {

class EventWatcher final : public FObject {
public:
    // The state bit of an event that is no longer part of a project.
    static constexpr std::uint32_t kRemoved = 2;

    EventWatcher() = default;
    ~EventWatcher() override { attach(nullptr); }

    // Becomes a dependent of the tracker instead of that of an earlier one; null for none. Nothing is watched then.
    void attach(ProjectTracker* tracker);
    // The event is not referenced: the host keeps it alive for as long as it can come back by undo.
    void watch(IProjectObject* event);
    IProjectObject* event() const { return event_; }
    void setCallback(std::function<void()> gone) { gone_ = std::move(gone); }

    void update(IBaseUnknown* subject, std::int32_t code) override;

private:
    bool isGone() const;
    void tellGone();

    FRefPtr<ProjectTracker> subject_;
    IProjectObject* event_ = nullptr;
    std::uint32_t stateMask_ = kRemoved;
    std::function<void()> gone_;
};

} // namespace tessera
