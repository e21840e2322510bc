#include "platform/IpcPace.h"

namespace tessera::platform {

std::chrono::milliseconds ipcSendPause() {
    return std::chrono::milliseconds(0);
}

} // namespace tessera::platform
