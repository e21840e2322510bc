#include "platform/InterruptRequest.h"

#include <atomic>
#include <windows.h>

namespace tessera::platform {
namespace {

std::atomic<bool> requested{false};

bool endsTheProcess(DWORD wish) {
    return wish == CTRL_CLOSE_EVENT || wish == CTRL_LOGOFF_EVENT || wish == CTRL_SHUTDOWN_EVENT;
}

// On a thread of the system's own.
BOOL WINAPI note(DWORD wish) {
    // The default for the second wish is the process's end.
    if (requested.exchange(true)) {
        return FALSE;
    }
    if (endsTheProcess(wish)) {
        // The system ends the process as soon as this comes back, and after some seconds anyway; until then the
        // program ends by itself.
        Sleep(INFINITE);
    }
    return TRUE;
}

} // namespace

void noteInterrupts() {
    SetConsoleCtrlHandler(note, TRUE);
}

bool interruptRequested() {
    return requested.load();
}

} // namespace tessera::platform
