// Which hosts may run the module, and from which version on.
#pragma once

namespace tessera {

struct IHostApplicationInfo;

// Whether the host's name stands in a row of the table and its version is at least that row's minimum. Names are
// compared with case. False for null.
bool isHostAdmitted(IHostApplicationInfo* host);

} // namespace tessera
