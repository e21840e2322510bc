// IUrlFactory: a new, empty host file object at each queryService.
#pragma once

#include "shell/hostapi/IHostFile.h"

namespace tessera {

struct IUrlFactory : IHostFile {
    static constexpr FUIDBytes iid = "{0AF38EA1-40F2-4B14-965B-F97CA4FF94D1}"_uid;

protected:
    ~IUrlFactory() = default;
};

} // namespace tessera
