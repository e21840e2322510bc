// IStreamProxy: what a stream that was handed out to a plug-in says about itself beside its bytes.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IStreamProxy : IBaseUnknown {
    static constexpr FUIDBytes iid = "{C1E0A5D2-77B4-4F19-8D3E-2B96F05A4C71}"_uid;

    // kResultOk for what the stream can do, of "CanRead", "CanWrite" and "CanIterate"; kResultFalse for all else.
    virtual FResult isSupported(const char* key) = 0;

protected:
    ~IStreamProxy() = default;
};

} // namespace tessera
