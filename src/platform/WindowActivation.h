// WindowActivation: bringing another program's window to the front, where programs can do that to each other.
#pragma once

namespace tessera::platform {

// The first top-level window of that class, whichever program owns it. Nothing happens where there is no such window,
// and on systems whose windows have no classes. Main thread.
void raiseWindow(const char16_t* windowClass);

} // namespace tessera::platform
