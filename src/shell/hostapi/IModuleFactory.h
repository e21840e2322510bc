// IModuleFactory: what GetPluginFactory gives, for hosts that read 8-bit class records. Implemented by the module;
// called by the host from one thread. Records are plain structures in the caller's memory, which are filled here.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct ClassInfo;
struct FactoryInfo;

struct IModuleFactory : IBaseUnknown {
    static constexpr FUIDBytes iid = "{7A4D811C-5211-4A1F-AED9-D2EE0B43BF9F}"_uid;

    // Slot 3. Any time. Copies the vendor's record; a null pointer is passed over. Always kResultOk.
    virtual FResult describeFactory(FactoryInfo* info) = 0;

    // Slot 4. Any time. How many classes the module offers.
    virtual std::int32_t classCount() = 0;

    // Slot 5. Any time. kInvalidArgument for a null record or an index out of range; kResultFalse with a zeroed
    // record for a class that has a 16-bit record alone.
    virtual FResult describeClass(std::int32_t index, ClassInfo* info) = 0;

    // Slot 6. Any time. A new object of the class, as the interface asked for, with one reference that belongs to the
    // caller. An unknown class or interface: null in *out and kNoInterface.
    virtual FResult createObject(const FUIDBytes& classId, const FUIDBytes& interfaceId, void** out) = 0;

protected:
    ~IModuleFactory() = default;
};

} // namespace tessera
