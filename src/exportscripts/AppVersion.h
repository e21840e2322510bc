// AppVersion: the four-part version of an application, as hosts and export scripts tell it.
//
// A plain value. Versions are ordered by major, then minor, then patch, then build; the default is 0.0.0.0, which
// stands for "no version".
#pragma once

#include <compare>
#include <cstdint>
#include <string_view>

namespace tessera {

struct AppVersion {
    // In ascending significance, so that the record reads as one 128-bit little-endian number.
    std::uint32_t build = 0;
    std::uint32_t patch = 0;
    std::uint32_t minor = 0;
    std::uint32_t major = 0;

    friend bool operator==(const AppVersion&, const AppVersion&) = default;
    friend constexpr std::strong_ordering operator<=>(const AppVersion& a, const AppVersion& b) {
        if (const auto order = a.major <=> b.major; order != 0) {
            return order;
        }
        if (const auto order = a.minor <=> b.minor; order != 0) {
            return order;
        }
        if (const auto order = a.patch <=> b.patch; order != 0) {
            return order;
        }
        return a.build <=> b.build;
    }
};

// Reads the last number group of a text that people write: "9", "V9.1", "Version 9.0.12 beta", "9.0.12-3". What stands
// behind the last digit is dropped, and so is everything up to the last character before it that is no digit, "." or
// "-". The rest is split at "." and "-" without empty pieces: major, minor, patch, build; more pieces are ignored. A
// piece that is missing or doesn't fit 32 bits is 0; a text without a digit is 0.0.0.0.
AppVersion parseVersion(std::string_view text);

} // namespace tessera
