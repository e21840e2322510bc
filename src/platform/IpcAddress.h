// IpcAddress: how long the address of a local socket may be on this platform.
#pragma once

#include <string_view>

namespace tessera::platform {

// Whether the path of an ipc endpoint fits the system's socket address. The transport library of the link doesn't ask:
// it ends the process for some of the lengths that don't fit.
bool fitsIpcAddress(std::string_view path);

// The system's error number for a name that is too long.
int nameTooLongError();

} // namespace tessera::platform
