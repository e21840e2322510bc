// ICommandTable: the commands that the host shows in its menus.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct ICommandTable : IBaseUnknown {
    static constexpr FUIDBytes iid = "{A42A9119-161E-4547-98A2-6FB769140E24}"_uid;

    // Slot 3. Main thread. Enters a command; all texts are copied. The module handle marks the owner, the group is
    // the menu, name16 is what the user reads, category and name are what ICommandHandler is asked with. The fourth
    // word is always 0.
    virtual FResult addCommand(void* moduleHandle, const char* group, const char16_t* name16, std::int64_t unused,
                               const char* category, const char* name) = 0;

    // Slot 4. Main thread. Takes out all commands of that owner; kResultFalse if there were none.
    virtual FResult removeCommands(void* moduleHandle) = 0;

protected:
    ~ICommandTable() = default;
};

} // namespace tessera
