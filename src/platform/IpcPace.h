// IpcPace: how soon one message may follow another over a local socket of this platform.
#pragma once

#include <chrono>

namespace tessera::platform {

// How long the transport library may need, after a message was sent, until it takes another one that isn't to wait. A
// message sent earlier than that may be refused. Zero where the library is done when its send returns.
std::chrono::milliseconds ipcSendPause();

} // namespace tessera::platform
