#include "platform/IpcPace.h"

namespace tessera::platform {

std::chrono::milliseconds ipcSendPause() {
    // The library hands a message to the pipe and learns from a completion port, in a thread of its own, that it is
    // out. That takes microseconds on an idle machine and milliseconds on one whose processors are all busy.
    return std::chrono::milliseconds(30);
}

} // namespace tessera::platform
