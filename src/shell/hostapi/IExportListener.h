// IExportListener: told by the host before and after it writes an audio file by export. Implemented by the module,
// given to IExportHost.
#pragma once

#include "foundation/object/IBaseUnknown.h"

#include <cstdint>

namespace tessera {

struct IAttributeList;
struct IHostFile;
struct IProject;

struct IExportListener : IBaseUnknown {
    // Slot 3. Main thread, before the file is written. Start and length of the exported stretch are in seconds of the
    // project. The listener may put attributes on the list, which travel with the file. Nothing is kept beyond the
    // call. kInvalidArgument without project or attributes; kResultFalse when the project has no file yet.
    virtual FResult prepareExport(IHostFile* file, double assetStart, double assetLength, IProject* project,
                                  IAttributeList* attributes) = 0;

    // Slot 4. Main thread, after the last prepareExport. 1: the file is written; anything else: it is not. Always
    // kResultOk.
    virtual FResult exportFinished(std::int32_t state) = 0;

protected:
    ~IExportListener() = default;
};

} // namespace tessera
