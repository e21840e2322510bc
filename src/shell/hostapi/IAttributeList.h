// IAttributeList: values under keys, which a guest may add to.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct AttributeValue;

struct IAttributeList : IBaseUnknown {
    virtual void reserved3() = 0;
    virtual void reserved4() = 0;

    // Slot 5. Main thread, during the call that brought the list. Key and value are copied. The word is always 0.
    virtual FResult set(const char* key, const AttributeValue* value, std::int64_t unused) = 0;

protected:
    ~IAttributeList() = default;
};

} // namespace tessera
