#include "host/objects/HostObjectBase.h"

#include <string>
#include <utility>

namespace tessera::host {

HostObjectBase::HostObjectBase(std::shared_ptr<GuestWatch> watch, const char* className)
    : watch_(std::move(watch)), className_(className) {
    watch_->enter(this);
}

HostObjectBase::~HostObjectBase() {
    watch_->leave(this);
}

int HostObjectBase::guestReferences() const {
    const std::lock_guard guard(watch_->referenceLock());
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
    const std::lock_guard guard(watch_->referenceLock());
    if (guestReferences_ == 0) {
        self_ = shared_from_this();
    }
    return static_cast<std::uint32_t>(++guestReferences_);
}

std::uint32_t HostObjectBase::giveReference() {
    std::shared_ptr<HostObjectBase> last;
    {
        const std::lock_guard guard(watch_->referenceLock());
        if (guestReferences_ > 0) {
            if (--guestReferences_ > 0) {
                return static_cast<std::uint32_t>(guestReferences_);
            }
            last = std::move(self_);
            self_.reset();
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
