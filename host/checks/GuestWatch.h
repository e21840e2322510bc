// GuestWatch: what the host knows of its guest's manners.
//
// Every slot that does or tells anything asks here first. A call from another thread, a call after terminate, a
// reserved slot, a reference given back twice: each becomes a line that names object and slot, and the call is refused;
// nothing that a guest does wrong ends the host. It also knows every host object, so that references which were never
// given back can be told by name.
//
// Shared by all host objects and outlives them: a guest's singletons may call as late as the process's exit handlers.
// The main thread is the one that makes the watch. Any thread may report.
#pragma once

#include "host/checks/GuestLife.h"

#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace tessera::host {

class HostObjectBase;

class GuestWatch {
public:
    // What a guest may still do when it has been terminated.
    enum class Lateness { notAllowed, allowed };

    struct Held {
        std::string className;
        int references = 0;
    };

    GuestLife life() const { return life_; }
    void setLife(GuestLife life) { life_ = life; }

    // False, with a report, when this call must not happen.
    bool admit(const char* className, const char* slot, Lateness lateness = Lateness::notAllowed);

    void misuse(const std::string& text);
    std::vector<std::string> misuses() const;
    // Told each misuse as it happens; null for silence.
    void setListener(std::function<void(const std::string&)> listener) { listener_ = std::move(listener); }

    void enter(HostObjectBase* object);
    void leave(HostObjectBase* object);
    // The objects that a guest holds references of, sorted by name; those that may outlive it are left out.
    std::vector<Held> held() const;

    // Objects whose last reference has gone stay until the guest has returned to the host: what it does to them by
    // mistake then hits an object, not freed memory.
    void retire(std::shared_ptr<HostObjectBase> object);
    void bury();
    // The host is going: from now on there is no quiet moment any more in which the retired could be let go.
    void stopRetiring();

private:
    const std::thread::id mainThread_ = std::this_thread::get_id();
    GuestLife life_ = GuestLife::none;
    std::function<void(const std::string&)> listener_;
    mutable std::mutex lock_; // guards all below
    bool isRetiring_ = true;
    std::vector<std::string> misuses_;
    std::set<HostObjectBase*> objects_;
    std::vector<std::shared_ptr<HostObjectBase>> retired_;
};

} // namespace tessera::host
