// IFolderNode: an entry of a project's pool. It is known by its identity alone.
#pragma once

#include "foundation/object/IBaseUnknown.h"

namespace tessera {

struct IFolderNode : IBaseUnknown {
    static constexpr FUIDBytes iid = "{E34A31B4-ADCB-40BC-BCE6-4393CFBF48BF}"_uid;

protected:
    ~IFolderNode() = default;
};

} // namespace tessera
