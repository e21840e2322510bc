// How the words for priorities map to nice values. Apart from the calls, since only a privileged process can try all.
#pragma once

#include "platform/ProcessPriority.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace tessera::platform {

struct NicenessRow {
    std::int32_t word;
    int nice;
};

inline constexpr NicenessRow kClassNiceness[] = {
    {kHighClass, -10},
    {kAboveNormalClass, -5},
    {kNormalClass, 0},
    {kBelowNormalClass, 5},
};

inline constexpr NicenessRow kThreadNiceness[] = {
    {-15, 19}, {-2, 4}, {-1, 2}, {0, 0}, {1, -2}, {2, -4}, {15, -10},
};

template <std::size_t N>
constexpr std::optional<int> findNiceness(const NicenessRow (&rows)[N], std::int64_t word) {
    for (const NicenessRow& row : rows) {
        if (row.word == word) {
            return row.nice;
        }
    }
    return std::nullopt;
}

constexpr std::optional<int> classNiceness(std::uint32_t processClass) {
    return findNiceness(kClassNiceness, processClass);
}

constexpr int clampNiceness(int nice) {
    return std::clamp(nice, -20, 19);
}

// Nothing for a word that isn't in the tables.
constexpr std::optional<int> threadNiceness(std::uint32_t processClass, std::int32_t value) {
    const std::optional<int> base = classNiceness(processClass);
    const std::optional<int> own = findNiceness(kThreadNiceness, value);
    return base && own ? std::optional(clampNiceness(*base + *own)) : std::nullopt;
}

} // namespace tessera::platform
