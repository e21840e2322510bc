// IProjectOpener: opens a project file. Asked of the host's context, not of IHostServices.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IHostFile;

struct IProjectOpener : IBaseUnknown {
    static constexpr FUIDBytes iid = "{43B13CC1-1B75-4432-A09C-D9527C1DD0AC}"_uid;

    // Slot 3. Main thread. Opens the project and makes it active; one that is open already only becomes active. The
    // second word is always 0. Anything but kResultOk: it could not be opened, and what was active stays so.
    virtual FResult open(IHostFile* file, std::int64_t unused) = 0;

protected:
    ~IProjectOpener() = default;
};

} // namespace tessera
