#include "platform/TimerMessages.h"

#include <atomic>
#include <windows.h>

namespace tessera::platform {
namespace {

// All timers of this process tell the same; several threads may start one at a time.
std::atomic<TimerMessage> receiver{nullptr};

void CALLBACK tell(HWND, UINT, UINT_PTR timer, DWORD) {
    receiver.load()(timer);
}

} // namespace

std::uintptr_t startTimerMessages(std::uint32_t periodMs, TimerMessage message) {
    receiver.store(message);
    // Without a window: the message comes through the loop of this thread, and the system finds the number.
    return SetTimer(nullptr, 0, periodMs, tell);
}

void stopTimerMessages(std::uintptr_t timer) {
    KillTimer(nullptr, timer);
}

} // namespace tessera::platform
