// TimerMessages: the system's own timer of a thread, as far as a system has one. Each period the loop that gets the
// thread's messages is told of it. For ThreadTimer, which ticks from there as well as from loops that get no messages.
#pragma once

#include <cstdint>

namespace tessera::platform {

// On the loop's thread.
using TimerMessage = void (*)(std::uintptr_t timer);

// The timer's number; 0 when the system refuses. A system without such timers gives a number and tells nothing. To be
// stopped on the thread that started it.
std::uintptr_t startTimerMessages(std::uint32_t periodMs, TimerMessage message);
void stopTimerMessages(std::uintptr_t timer);

} // namespace tessera::platform
