// ISelection: what the user has selected. Kind 1 lists events, kind 9 ranges, whose entries are events with a scope.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct ISelection : IBaseUnknown {
    static constexpr FUIDBytes iid = "{05B21566-9B33-4363-AF1E-7C4B52D99238}"_uid;

    // Slot 3. Main thread. The scope that has the user's attention.
    virtual std::uint64_t currentScope() = 0;

    virtual void reserved4() = 0;

    // Slot 5. Main thread. Chooses what count and item list; kResultFalse for a kind that this host doesn't know.
    virtual FResult selectKind(std::uint64_t scope, std::int32_t kind) = 0;

    // Slot 6. Main thread, after selectKind.
    virtual std::int32_t count() = 0;

    // Slot 7. Main thread, after selectKind. An IBaseUnknown in *object, with one reference that belongs to the
    // caller, and the word that its operations want back. kInvalidArgument for an index out of range, with null.
    virtual FResult item(std::int32_t index, void** object, std::uint64_t* scope) = 0;

protected:
    ~ISelection() = default;
};

} // namespace tessera
