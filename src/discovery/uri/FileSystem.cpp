#include "discovery/uri/FileSystem.h"

namespace tessera {

Result<std::shared_ptr<DirectoryWatcher>> FileSystem::monitor(const Uri&) {
    return Error("no monitor available");
}

} // namespace tessera
