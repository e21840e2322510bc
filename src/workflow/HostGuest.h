// HostGuest: the common part of a small object of ours that a host holds by one interface: reference count and
// interface query. It answers that interface's identifier, if it has one, and IBaseUnknown.
//
// A new object has one reference, which belongs to its creator; the last release deletes it. Any thread may count.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <atomic>

namespace tessera {

template <class Interface>
class HostGuest : public Interface {
public:
    HostGuest(const HostGuest&) = delete;
    HostGuest& operator=(const HostGuest&) = delete;

    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        if (out == nullptr) {
            return kInvalidArgument;
        }
        // An interface without an identifier of its own has the one it inherits.
        if (uid == Interface::iid || uid == IBaseUnknown::iid) {
            addRef();
            *out = static_cast<Interface*>(this);
            return kResultOk;
        }
        *out = nullptr;
        return kNoInterface;
    }

    std::uint32_t addRef() override { return count_.fetch_add(1, std::memory_order_relaxed) + 1; }

    std::uint32_t release() override {
        const std::uint32_t left = count_.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0) {
            delete this;
        }
        return left;
    }

protected:
    HostGuest() = default;
    virtual ~HostGuest() = default;

private:
    std::atomic<std::uint32_t> count_{1};
};

} // namespace tessera
