// FStaticService: an interface implemented by one static object, which nobody's release ever destroys.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

template <class Interface>
class FStaticService : public Interface {
public:
    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        const bool known = uid == Interface::iid || uid == IBaseUnknown::iid;
        *out = known ? static_cast<Interface*>(this) : nullptr;
        return known ? kResultOk : kNoInterface;
    }
    std::uint32_t addRef() override { return kCount; }
    std::uint32_t release() override { return kCount; }

protected:
    ~FStaticService() = default;

private:
    static constexpr std::uint32_t kCount = 1;
};

} // namespace tessera
