// WatchedFolder: one folder that a DirectoryWatcher looks after. The system's part (the open folder, the memory it
// writes to, the state of that write) stands behind `handle`.
#pragma once

#include "platform/FolderChangePort.h"

#include <cstdint>
#include <string>

namespace tessera {

struct WatchedFolder {
    std::string path;
    // Its key at the port.
    platform::FolderChangePort::Key handle = 0;
    // How many calls of watch hold it. With none it is closed, and stays only until the port has told its end.
    std::uint32_t references = 0;
};

} // namespace tessera
