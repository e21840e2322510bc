// ownObject: the host's own object behind an interface pointer that comes from a guest, or null when it is none of ours
// or of another class. It takes no reference. The class is told by an identifier that exists in this process alone.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>
#include <cstring>

namespace tessera::host {

template <class Class>
FUIDBytes ownObjectId() {
    static const char here = 0;
    const void* const address = &here;
    FUIDBytes result{{'h', 'o', 's', 't', 'o', 'b', 'j', '.'}};
    std::memcpy(result.bytes + 8, &address, sizeof address);
    return result;
}

template <class Class>
Class* ownObject(IBaseUnknown* object) {
    void* found = nullptr;
    if (object == nullptr || object->queryInterface(ownObjectId<Class>(), &found) != kResultOk) {
        return nullptr;
    }
    return static_cast<Class*>(found);
}

} // namespace tessera::host
