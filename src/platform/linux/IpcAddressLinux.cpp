#include "platform/IpcAddress.h"

#include <cerrno>
#include <sys/un.h>

namespace tessera::platform {

bool fitsIpcAddress(std::string_view path) {
    // One byte of the array is the zero at the end.
    return path.size() < sizeof(sockaddr_un::sun_path);
}

int nameTooLongError() {
    return ENAMETOOLONG;
}

} // namespace tessera::platform
