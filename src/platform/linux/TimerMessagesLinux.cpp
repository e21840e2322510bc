#include "platform/TimerMessages.h"

namespace tessera::platform {

// Threads have no messages here.
std::uintptr_t startTimerMessages(std::uint32_t, TimerMessage) {
    return 1;
}

void stopTimerMessages(std::uintptr_t) {}

} // namespace tessera::platform
