// IPool: the audio that belongs to a project.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IFolderNode;

struct IPool : IBaseUnknown {
    virtual void reserved3() = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual void reserved6() = 0;

    // Slot 7. Main thread. Enters a clip; the pool holds a reference. The word is always 0. Anything but kResultOk:
    // it was not entered.
    virtual FResult add(IFolderNode* node, std::int64_t unused) = 0;

protected:
    ~IPool() = default;
};

} // namespace tessera
