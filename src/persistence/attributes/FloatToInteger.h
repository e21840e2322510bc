// A float cut to an integer: out of range it's the nearest one, and a NaN is 0.
#pragma once

#include <cstdint>
#include <limits>

namespace tessera {

constexpr std::int64_t integerFromFloat(double value) {
    // 2 to the 63rd, the first value above the range, has an exact form; the largest integer has none.
    constexpr double kEnd = 9223372036854775808.0;
    if (value != value) {
        return 0;
    }
    if (value >= kEnd) {
        return std::numeric_limits<std::int64_t>::max();
    }
    return value < -kEnd ? std::numeric_limits<std::int64_t>::min() : static_cast<std::int64_t>(value);
}

} // namespace tessera
