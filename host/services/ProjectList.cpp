#include "host/services/ProjectList.h"

#include "host/objects/GuestCall.h"

#include <algorithm>
#include <utility>

namespace tessera::host {

// A terminated guest's listener may still be in the list, and isn't to be called.
template <class Operation>
void ProjectList::tell(const char* name, Operation operation) {
    if (watch()->life() == GuestLife::terminated) {
        return;
    }
    const std::vector<IProjectListListener*> told = listeners_;
    for (IProjectListListener* listener : told) {
        if (std::find(listeners_.begin(), listeners_.end(), listener) != listeners_.end()) {
            callGuest(*watch(), name, [&] { operation(*listener); });
        }
    }
}

void ProjectList::setActive(std::shared_ptr<Project> project) {
    if (active_ != nullptr) {
        tell("IProjectListListener.projectDeactivated",
             [&](IProjectListListener& listener) { listener.projectDeactivated(active_.get()); });
    }
    active_ = std::move(project);
    if (active_ != nullptr) {
        tell("IProjectListListener.activated",
             [&](IProjectListListener& listener) { listener.activated(active_.get()); });
    }
}

FResult ProjectList::addListener(IProjectListListener* listener) {
    if (!guestMay("addListener") || listener == nullptr) {
        return kInvalidArgument;
    }
    listeners_.push_back(listener);
    if (active_ != nullptr) {
        callGuest(*watch(), "IProjectListListener.activated", [&] { listener->activated(active_.get()); });
    }
    return kResultOk;
}

FResult ProjectList::removeListener(IProjectListListener* listener) {
    return guestMayLate("removeListener") && std::erase(listeners_, listener) > 0 ? kResultOk : kResultFalse;
}

} // namespace tessera::host
