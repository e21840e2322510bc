#include "workflow/EventWatcher.h"

#include "shell/hostapi/IEventOwner.h"
#include "shell/hostapi/IObjectTest.h"
#include "workflow/EventTree.h"
#include "workflow/HostServices.h"

namespace tessera {

void EventWatcher::attach(ProjectTracker* tracker) {
    watch(nullptr);
    if (subject_) {
        subject_->removeDependent(this);
    }
    subject_ = tracker;
    if (subject_) {
        subject_->addDependent(this);
    }
}

void EventWatcher::watch(IProjectObject* event) {
    event_ = event;
    stateMask_ = kRemoved;
}

void EventWatcher::update(IBaseUnknown* subject, std::int32_t code) {
    const auto test = queryService<IObjectTest>();
    if (event_ == nullptr || !subject_ || !test ||
        test->compare(subject, static_cast<FObject*>(subject_.get())) != kResultOk) {
        return;
    }
    const bool projectChanges = code == ProjectChange::activated || code == ProjectChange::deactivated;
    if (projectChanges || (code == ProjectChange::object && isGone())) {
        tellGone();
    }
}

bool EventWatcher::isGone() const {
    const std::uint32_t state = event_->state();
    if (state == 0) {
        return false;
    }
    const auto test = queryService<IObjectTest>();
    const auto owner = findAbove<IEventOwner>(event_);
    // An event that its project still owns is only on its way from one track to another.
    return test && test->compare(owner.get(), subject_->activeProject()) != kResultOk && (state & stateMask_) != 0;
}

void EventWatcher::tellGone() {
    if (gone_) {
        gone_();
    }
    event_ = nullptr;
}

} // namespace tessera
