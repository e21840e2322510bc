// TemporaryFolder: where this user's processes put what needn't stay, and where they find each other.
//
// A UTF-8 path with "/" as the separator and none at the end. Asked anew each time, since the environment can change.
// Empty when there is no folder that this user can trust: the others' files would be taken for one's own there. From
// any thread, as far as nobody changes the environment meanwhile.
#pragma once

#include <string>

namespace tessera::platform {

std::string temporaryFolder();

} // namespace tessera::platform
