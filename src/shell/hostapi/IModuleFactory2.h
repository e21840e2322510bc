// IModuleFactory2: the factory for hosts that read the longer 8-bit class records.
#pragma once

#include "shell/hostapi/IModuleFactory.h"

#include <cstdint>

namespace tessera {

struct ClassInfoEx;

struct IModuleFactory2 : IModuleFactory {
    static constexpr FUIDBytes iid = "{0007B650-F24B-4C0B-A464-EDB9F00B2ABB}"_uid;

    // Slot 7. Any time. The outcomes of describeClass, with the longer record.
    virtual FResult describeClassEx(std::int32_t index, ClassInfoEx* info) = 0;

protected:
    ~IModuleFactory2() = default;
};

} // namespace tessera
