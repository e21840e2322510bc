// IObjectOrder: identity and order of two objects, for modules that know them by interface alone.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IObjectOrder : IBaseUnknown {
    static constexpr FUIDBytes iid = "{0407EB04-3713-4E28-9A82-34AB4877B109}"_uid;

    // 0 for the same object, else not 0. Two nulls are the same, one null and an object aren't.
    virtual FResult isSameObject(IBaseUnknown* a, IBaseUnknown* b) = 0;
    // Writes a's order against b: below 0, 0, above 0. kInvalidArgument when result is null or one of the two is no
    // CmObject of this module.
    virtual FResult compareObjects(IBaseUnknown* a, IBaseUnknown* b, std::int32_t* result) = 0;

protected:
    ~IObjectOrder() = default;
};

} // namespace tessera
