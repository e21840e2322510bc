// One pointer per thread under a number. The value of a new slot is null in every thread. Nothing is done with a value
// when its thread ends.
#pragma once

#include <cstdint>

namespace tessera::platform {

// Never 0 for a slot that exists.
using ThreadSlot = std::uint32_t;
inline constexpr ThreadSlot kNoThreadSlot = 0;

// kNoThreadSlot when the system has none left.
ThreadSlot allocateThreadSlot();
void freeThreadSlot(ThreadSlot slot);

// False where the system refuses, and for kNoThreadSlot.
bool setThreadSlotValue(ThreadSlot slot, void* value);
// Null for kNoThreadSlot.
void* threadSlotValue(ThreadSlot slot);

} // namespace tessera::platform
