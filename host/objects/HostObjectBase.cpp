#include "host/objects/HostObjectBase.h"

#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace tessera::host {
namespace {

// The objects that a guest holds references of. Never destroyed: a guest's singletons give back what they hold as late
// as the exit handlers of the process.
struct KeptObjects {
    std::mutex lock; // guards the map and every object's count
    std::map<const HostObjectBase*, std::shared_ptr<HostObjectBase>> objects;
};

KeptObjects& kept() {
    static KeptObjects* const instance = new KeptObjects;
    return *instance;
}

} // namespace

HostObjectBase::HostObjectBase(std::shared_ptr<GuestWatch> watch, const char* className)
    : watch_(std::move(watch)), className_(className) {
    watch_->enter(this);
}

HostObjectBase::~HostObjectBase() {
    watch_->leave(this);
}

int HostObjectBase::guestReferences() const {
    const std::lock_guard guard(kept().lock);
    return guestReferences_;
}

void HostObjectBase::reportMisuse(const char* slot, const char* what) const {
    watch_->misuse(std::string(className_) + "." + slot + ": " + what);
}

void HostObjectBase::reportReserved(const char* interfaceName, int slot) const {
    watch_->misuse(std::string(className_) + ": the reserved slot " + std::to_string(slot) + " of " + interfaceName +
                   " was called");
}

std::uint32_t HostObjectBase::takeReference() {
    const std::lock_guard guard(kept().lock);
    if (guestReferences_ == 0) {
        kept().objects.emplace(this, shared_from_this());
    }
    return static_cast<std::uint32_t>(++guestReferences_);
}

std::uint32_t HostObjectBase::giveReference() {
    std::shared_ptr<HostObjectBase> last;
    {
        const std::lock_guard guard(kept().lock);
        if (guestReferences_ > 0) {
            if (--guestReferences_ > 0) {
                return static_cast<std::uint32_t>(guestReferences_);
            }
            last = std::move(kept().objects.extract(this).mapped());
        }
    }
    if (last == nullptr) {
        reportMisuse("release", "a reference was given back that nobody had taken");
        return 0;
    }
    onGuestReleased();
    watch_->retire(std::move(last));
    return 0;
}

} // namespace tessera::host
