// HostObject: the slots 0 to 2 of a host object that offers the given interfaces. The first one answers for
// IBaseUnknown, so an object has one identity whichever of its tables it is asked through. Self is the class that
// derives from this.
#pragma once

#include "host/objects/HostObjectBase.h"
#include "host/objects/OwnObject.h"
#include "shell/hostapi/UnusedSlots.h"

#include <memory>
#include <utility>

namespace tessera::host {

template <class Self, class First, class... Rest>
class HostObject : public HostObjectBase, public First, public Rest... {
public:
    FResult queryInterface(const FUIDBytes& uid, void** out) final {
        if (out == nullptr) {
            reportMisuse("queryInterface", "the out pointer is null");
            return kInvalidArgument;
        }
        *out = nullptr;
        if (uid == ownObjectId<Self>()) {
            *out = static_cast<Self*>(this);
            return kResultOk;
        }
        if (offers(uid)) {
            *out = find<First, Rest...>(uid);
        }
        if (*out == nullptr) {
            return kNoInterface;
        }
        takeReference();
        return kResultOk;
    }
    std::uint32_t addRef() final { return takeReference(); }
    std::uint32_t release() final { return giveReference(); }

    IBaseUnknown* unknown() { return static_cast<First*>(this); }
    std::shared_ptr<Self> self() { return std::static_pointer_cast<Self>(shared_from_this()); }

protected:
    HostObject(std::shared_ptr<GuestWatch> watch, const char* className)
        : HostObjectBase(std::move(watch), className) {}

    // For objects that don't offer all of their interfaces all of the time.
    virtual bool offers(const FUIDBytes&) const { return true; }

private:
    template <class Interface, class... More>
    void* find(const FUIDBytes& uid) {
        if (uid == Interface::iid) {
            return static_cast<Interface*>(this);
        }
        if constexpr (sizeof...(More) > 0) {
            return find<More...>(uid);
        } else {
            return uid == IBaseUnknown::iid ? static_cast<void*>(unknown()) : nullptr;
        }
    }
};

} // namespace tessera::host
