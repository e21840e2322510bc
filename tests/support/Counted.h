// Counted: reference count and interface question for objects that are handed out as one interface each, without any of
// the framework: for modules that stand for those of other makers.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <atomic>
#include <cstdint>

namespace tessera::test {

template <class Interface>
class Counted : public Interface {
public:
    Counted() = default;
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    virtual ~Counted() = default;

    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        const bool known = uid == Interface::iid || uid == IBaseUnknown::iid;
        *out = known ? static_cast<Interface*>(this) : nullptr;
        return known ? (addRef(), kResultOk) : kNoInterface;
    }
    std::uint32_t addRef() override { return ++references_; }
    std::uint32_t release() override {
        const std::uint32_t left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }

private:
    std::atomic<std::uint32_t> references_ = 1;
};

} // namespace tessera::test
