// ForeignObject: an object of another module: it answers IBaseUnknown, and whatever interfaces a test's subclass adds,
// and no private identifier. It counts its references and lives on the stack of the test.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera::test {

template <class Interface = IBaseUnknown>
class ForeignObject : public Interface {
public:
    virtual ~ForeignObject() = default;

    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        if (!(uid == Interface::iid) && !(uid == IBaseUnknown::iid)) {
            *out = nullptr;
            return kNoInterface;
        }
        *out = static_cast<Interface*>(this);
        addRef();
        return kResultOk;
    }
    std::uint32_t addRef() override { return ++references; }
    std::uint32_t release() override { return --references; }

    std::uint32_t references = 1;
};

} // namespace tessera::test
