#include "platform/ProcessEnd.h"

#include "platform/windows/LateEntry.h"

#include <windows.h>

namespace tessera::platform {

bool otherThreadsAreGone() {
    using Entry = BOOLEAN(WINAPI*)();
    static const auto isShuttingDown = lateEntry<Entry>(L"ntdll", "RtlDllShutdownInProgress");
    return isShuttingDown != nullptr && isShuttingDown() != FALSE;
}

} // namespace tessera::platform
