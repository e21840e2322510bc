#include "support/ProcessTable.h"

#include <windows.h>

namespace tessera::testing_support {

namespace {

HANDLE openProcess(int processId, DWORD rights) {
    return OpenProcess(rights, FALSE, static_cast<DWORD>(processId));
}

} // namespace

void killByNumber(int processId) {
    if (HANDLE process = openProcess(processId, PROCESS_TERMINATE | SYNCHRONIZE); process != nullptr) {
        TerminateProcess(process, 9);
        WaitForSingleObject(process, INFINITE);
        CloseHandle(process);
    }
}

bool hasVanished(int processId) {
    HANDLE process = openProcess(processId, SYNCHRONIZE);
    if (process == nullptr) {
        return true;
    }
    // A dead one can be opened for as long as somebody holds it; it is no more than that hold.
    const bool ended = WaitForSingleObject(process, 0) == WAIT_OBJECT_0;
    CloseHandle(process);
    return ended;
}

bool isForgotten(int processId) {
    HANDLE process = openProcess(processId, SYNCHRONIZE);
    if (process != nullptr) {
        CloseHandle(process);
    }
    return process == nullptr;
}

} // namespace tessera::testing_support
