// SystemTime: the system's times, counted in units of 100 ns since 1601, as those of the services.
#pragma once

#include <cstdint>

namespace tessera::platform {

inline constexpr std::int64_t kUnitsBefore1970 = 116'444'736'000'000'000;

// Seconds since 1970 in UTC, rounded down.
inline std::int64_t unixSeconds(std::int64_t systemTime) {
    constexpr std::int64_t kUnitsPerSecond = 10'000'000;
    const std::int64_t units = systemTime - kUnitsBefore1970;
    return units / kUnitsPerSecond - (units % kUnitsPerSecond < 0 ? 1 : 0);
}

inline std::int64_t unixSeconds(std::uint32_t high, std::uint32_t low) {
    return unixSeconds(static_cast<std::int64_t>((std::uint64_t{high} << 32) | low));
}

} // namespace tessera::platform
