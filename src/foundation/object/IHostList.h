// IHostList: a list of foreign objects as it crosses an interface. The list holds a reference of each of its entries.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IHostList : IBaseUnknown {
    static constexpr FUIDBytes iid = "{8E8562D8-67F5-4576-8175-61CFC2B134E3}"_uid;

    virtual std::int32_t getCount() = 0;
    // Borrowed; null past the end.
    virtual IBaseUnknown* getAt(std::int32_t index) = 0;
    // A null object is ignored.
    virtual void add(IBaseUnknown* object) = 0;
    // Takes out the first entry of that object.
    virtual void remove(IBaseUnknown* object) = 0;

protected:
    ~IHostList() = default;
};

} // namespace tessera
