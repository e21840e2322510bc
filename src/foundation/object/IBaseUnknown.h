// IBaseUnknown: slots 0 to 2 of every interface that crosses to a host, a peer module or a foreign object.
//
// The table holds these operations and no destructor, so that programs built by other compilers can call it by slot
// number. Whoever gets an object from queryInterface owns one reference and gives it back with release. Reference
// counts may be changed from any thread.
#pragma once

#include "foundation/object/FResult.h"
#include "foundation/object/FUIDBytes.h"

#include <cstdint>

namespace tessera {

struct IBaseUnknown {
    static constexpr FUIDBytes iid = "{00000000-0000-0000-C000-000000000046}"_uid;

    // kResultOk with one reference in *out, or kNoInterface with null in *out.
    virtual FResult queryInterface(const FUIDBytes& uid, void** out) = 0;
    // The new count, for diagnosis alone.
    virtual std::uint32_t addRef() = 0;
    virtual std::uint32_t release() = 0;

protected:
    ~IBaseUnknown() = default;
};

} // namespace tessera
