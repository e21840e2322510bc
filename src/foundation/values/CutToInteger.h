// cutToInteger: a floating-point number as an integer: its fraction cut off, the nearest integer where it is out of
// range, 0 for what is no number. A plain cast says nothing about those.
#pragma once

#include <cstdint>
#include <limits>

namespace tessera {

inline std::int32_t cutToInteger(double value) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (value != value) {
        return 0;
    }
    if (value <= static_cast<double>(Limits::min())) {
        return Limits::min();
    }
    if (value >= static_cast<double>(Limits::max())) {
        return Limits::max();
    }
    return static_cast<std::int32_t>(value);
}

} // namespace tessera
