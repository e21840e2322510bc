// HostObjectBase: what every object that a guest can see has in common: its name in reports, the guest's references,
// the way to the watch.
//
// The host owns its objects by shared pointers. References that go through addRef and release are the guest's alone,
// and are counted apart: as long as there is one the object is kept alive, and a count that doesn't go back to
// zero is a leak of the guest's, told by name. Counts may be changed from any thread.
#pragma once

#include "host/checks/GuestWatch.h"

#include <cstdint>
#include <memory>

namespace tessera::host {

class HostObjectBase : public std::enable_shared_from_this<HostObjectBase> {
public:
    HostObjectBase(const HostObjectBase&) = delete;
    HostObjectBase& operator=(const HostObjectBase&) = delete;
    virtual ~HostObjectBase();

    const char* className() const { return className_; }
    int guestReferences() const;
    // Services that a guest keeps for its whole life, which ends with the process.
    virtual bool mayOutliveGuest() const { return false; }

    const std::shared_ptr<GuestWatch>& watch() const { return watch_; }

protected:
    HostObjectBase(std::shared_ptr<GuestWatch> watch, const char* className);

    // False, with a report, when the guest must not call this slot now.
    bool guestMay(const char* slot) const { return watch_->admit(className_, slot); }
    // The same for slots that only take something back.
    bool guestMayLate(const char* slot) const { return watch_->admit(className_, slot, GuestWatch::Lateness::allowed); }
    void reportMisuse(const char* slot, const char* what) const;
    void reportReserved(const char* interfaceName, int slot) const;

    std::uint32_t takeReference();
    std::uint32_t giveReference();
    // The guest has given its last reference back; the host may still own the object.
    virtual void onGuestReleased() {}

private:
    const std::shared_ptr<GuestWatch> watch_;
    const char* const className_;
    int guestReferences_ = 0; // guarded by the lock of those that are kept
};

} // namespace tessera::host
