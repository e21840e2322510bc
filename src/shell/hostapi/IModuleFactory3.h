// IModuleFactory3: the factory for hosts that read class records with 16-bit texts.
#pragma once

#include "shell/hostapi/IModuleFactory2.h"

#include <cstdint>

namespace tessera {

struct ClassInfoWide;

struct IModuleFactory3 : IModuleFactory2 {
    static constexpr FUIDBytes iid = "{4555A2AB-C123-4E57-9B12-291036878931}"_uid;

    // Slot 8. Any time. kInvalidArgument for a null record or an index out of range; every class has this record.
    virtual FResult describeClassWide(std::int32_t index, ClassInfoWide* info) = 0;

    // Slot 9. Any time. The factory needs nothing of the host: the context is not kept. Always kResultOk.
    virtual FResult attachHost(IBaseUnknown* hostContext) = 0;

protected:
    ~IModuleFactory3() = default;
};

} // namespace tessera
