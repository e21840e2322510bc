#include "platform/IpcAddress.h"

#include <cerrno>

namespace tessera::platform {

namespace {

// The endpoint is the pipe of this prefix and the path, slashes included. A pipe's name has 256 characters at most, and
// the transport library holds the path in 126 bytes, one of them the zero at the end.
constexpr std::size_t kPathStorage = 126;
constexpr std::string_view kPipePrefix = "\\\\.\\pipe\\";
static_assert(kPipePrefix.size() + kPathStorage <= 256);

} // namespace

bool fitsIpcAddress(std::string_view path) {
    return path.size() < kPathStorage;
}

int nameTooLongError() {
    return ENAMETOOLONG;
}

} // namespace tessera::platform
