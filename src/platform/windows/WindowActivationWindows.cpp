#include "platform/WindowActivation.h"

#include "platform/windows/WideText.h"

#include <windows.h>

namespace tessera::platform {

void raiseWindow(const char16_t* windowClass) {
    // Without a window the second call has nothing to do either.
    SetForegroundWindow(FindWindowW(wide(windowClass), nullptr));
}

} // namespace tessera::platform
