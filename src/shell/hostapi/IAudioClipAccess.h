// IAudioClipAccess: makes a clip of a file. A new object at each queryService; queryInterface for IAudioClip gives
// the clip after a bind that worked.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IHostFile;

struct IAudioClipAccess : IBaseUnknown {
    static constexpr FUIDBytes iid = "{98ECBB42-93A1-4849-98FE-6F8C40EC22D3}"_uid;

    // Slot 3. Main thread, once. True: the file was opened and read as audio. The path is copied.
    virtual bool bind(IHostFile* file) = 0;

    // Slot 4. Main thread, after bind. True: there is no clip.
    virtual bool failed() = 0;

protected:
    ~IAudioClipAccess() = default;
};

} // namespace tessera
