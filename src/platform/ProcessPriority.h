// The priority class of this process. The words are the ones that Windows uses.
#pragma once

#include <cstdint>

namespace tessera::platform {

inline constexpr std::uint32_t kNormalClass = 32;
inline constexpr std::uint32_t kHighClass = 128;
inline constexpr std::uint32_t kBelowNormalClass = 16384;
inline constexpr std::uint32_t kAboveNormalClass = 32768;

std::uint32_t processClass();
// Moves all threads of the process along. False, with nothing changed, for another word and where the system refuses.
bool setProcessClass(std::uint32_t processClass);

// Whether the system raises threads that wake up. False where it has no such switch.
bool disablePriorityBoost(bool disable);

// For the end after a broken invariant: no dialog, no unwinding.
[[noreturn]] void abortQuietly();

} // namespace tessera::platform
