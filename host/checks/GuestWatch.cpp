#include "host/checks/GuestWatch.h"

#include "host/objects/HostObjectBase.h"

#include <algorithm>
#include <utility>

namespace tessera::host {

bool GuestWatch::admit(const char* className, const char* slot, Lateness lateness) {
    const std::string call = std::string(className) + "." + slot;
    if (std::this_thread::get_id() != mainThread_) {
        misuse(call + " was called from another thread than the host's main thread");
        return false;
    }
    if (life_ == GuestLife::terminated && lateness == Lateness::notAllowed) {
        misuse(call + " was called after terminate");
        return false;
    }
    return true;
}

void GuestWatch::misuse(const std::string& text) {
    {
        const std::lock_guard guard(lock_);
        misuses_.push_back(text);
    }
    if (listener_) {
        listener_(text);
    }
}

std::vector<std::string> GuestWatch::misuses() const {
    const std::lock_guard guard(lock_);
    return misuses_;
}

void GuestWatch::enter(HostObjectBase* object) {
    const std::lock_guard guard(lock_);
    objects_.insert(object);
}

void GuestWatch::leave(HostObjectBase* object) {
    const std::lock_guard guard(lock_);
    objects_.erase(object);
}

std::vector<GuestWatch::Held> GuestWatch::held() const {
    std::vector<Held> result;
    {
        const std::lock_guard guard(lock_);
        for (const HostObjectBase* object : objects_) {
            if (object->guestReferences() > 0 && !object->mayOutliveGuest()) {
                result.push_back({object->className(), object->guestReferences()});
            }
        }
    }
    std::sort(result.begin(), result.end(), [](const Held& a, const Held& b) { return a.className < b.className; });
    return result;
}

void GuestWatch::retire(std::shared_ptr<HostObjectBase> object) {
    const std::lock_guard guard(lock_);
    if (isRetiring_) {
        retired_.push_back(std::move(object));
    }
}

void GuestWatch::stopRetiring() {
    {
        const std::lock_guard guard(lock_);
        isRetiring_ = false;
    }
    bury();
}

void GuestWatch::bury() {
    std::vector<std::shared_ptr<HostObjectBase>> going;
    {
        const std::lock_guard guard(lock_);
        going.swap(retired_);
    }
    // Their destructors leave the set of objects, which takes the lock again.
}

} // namespace tessera::host
