#include "platform/ProcessPriority.h"

#include "platform/windows/LateEntry.h"

#include <cstdlib>
#include <windows.h>

namespace tessera::platform {

static_assert(kNormalClass == NORMAL_PRIORITY_CLASS && kHighClass == HIGH_PRIORITY_CLASS);
static_assert(kBelowNormalClass == BELOW_NORMAL_PRIORITY_CLASS && kAboveNormalClass == ABOVE_NORMAL_PRIORITY_CLASS);

std::uint32_t processClass() {
    return GetPriorityClass(GetCurrentProcess());
}

bool setProcessClass(std::uint32_t processClass) {
    switch (processClass) {
    case kNormalClass:
    case kHighClass:
    case kBelowNormalClass:
    case kAboveNormalClass:
        return SetPriorityClass(GetCurrentProcess(), processClass) != FALSE;
    default:
        // The system knows more classes, that nothing of ours may have: idle, and that of the system's own threads.
        return false;
    }
}

bool disablePriorityBoost(bool disable) {
    using SetBoost = BOOL(WINAPI*)(HANDLE, BOOL);
    const auto setBoost = lateEntry<SetBoost>(L"Kernel32", "SetProcessPriorityBoost");
    return setBoost != nullptr && setBoost(GetCurrentProcess(), disable ? TRUE : FALSE) != FALSE;
}

void abortQuietly() {
    // What the runtime has to say goes to the error stream and not into a dialog, and not at all where it lets itself
    // be told so; nor does the system report the end.
    _set_error_mode(_OUT_TO_STDERR);
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    using SetAbortBehaviour = unsigned(__cdecl*)(unsigned, unsigned);
    if (const auto setBehaviour = lateEntry<SetAbortBehaviour>(L"msvcrt", "_set_abort_behavior")) {
        constexpr unsigned kMessageAndReport = 3;
        setBehaviour(0, kMessageAndReport);
    }
    std::abort();
}

} // namespace tessera::platform
