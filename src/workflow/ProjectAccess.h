// ProjectAccess: opens a project of the host at the peer's wish. One process-wide word: the host's context, to which no
// reference is held. Main thread.
#pragma once

#include "foundation/object/FResult.h"

#include <string_view>

namespace tessera {

struct IBaseUnknown;
struct IHostFile;

class ProjectAccess {
public:
    static ProjectAccess& instance();

    // Null clears it.
    void setContext(IBaseUnknown* hostContext) { context_ = hostContext; }
    IBaseUnknown* context() const { return context_; }

    // Opens the project of the UTF-8 path, moves the play position to start, and sets the cycle range to the given
    // stretch, both in seconds. The position and the range are set also when the project can't be opened; 0 only if it
    // could.
    FResult openProject(std::string_view path, double start, double length);

private:
    FResult open(IHostFile* file) const;

    IBaseUnknown* context_ = nullptr;
};

} // namespace tessera
