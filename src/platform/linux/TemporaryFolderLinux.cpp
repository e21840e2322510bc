#include "platform/TemporaryFolder.h"

#include <cerrno>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace tessera::platform {

namespace {

// Anyone can make a folder in /tmp, so one that stands there already must be a real folder of ours.
bool makePrivateFolder(const std::string& path) {
    if (mkdir(path.c_str(), 0700) == 0) {
        return true;
    }
    if (errno != EEXIST) {
        return false;
    }
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid();
}

} // namespace

std::string temporaryFolder() {
    const char* named = std::getenv("TMPDIR");
    if (named != nullptr && named[0] == '/') {
        std::string folder = named;
        while (folder.size() > 1 && folder.back() == '/') {
            folder.pop_back();
        }
        return folder;
    }
    const std::string folder = "/tmp/user-" + std::to_string(geteuid());
    return makePrivateFolder(folder) ? folder : std::string();
}

} // namespace tessera::platform
