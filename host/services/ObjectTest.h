// ObjectTest: whether two pointers mean one object. An object's identity is what it answers for IBaseUnknown.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IObjectTest.h"

#include <memory>

namespace tessera::host {

inline bool isSameObject(IBaseUnknown* a, IBaseUnknown* b) {
    return a == b || (a != nullptr && b != nullptr && queryFor<IBaseUnknown>(a) == queryFor<IBaseUnknown>(b));
}

class ObjectTest final : public HostObject<ObjectTest, IObjectTest> {
public:
    explicit ObjectTest(const std::shared_ptr<HostCore>& core) : HostObject(core->watch, "ObjectTest") {}

    FResult compare(IBaseUnknown* a, IBaseUnknown* b) override {
        return guestMay("compare") && isSameObject(a, b) ? kResultOk : kResultFalse;
    }
};

} // namespace tessera::host
