// ComponentVersion: "1.5.10.6" as four numbers that compare from the first to the last. Numbers that are missing, or
// stand behind something else than a dot, are 0.
#pragma once

#include <array>
#include <compare>
#include <cstdint>

namespace tessera {

class FStringRef;

struct ComponentVersion {
    std::array<std::int32_t, 4> parts{};

    static ComponentVersion parse(const FStringRef& text);

    friend auto operator<=>(const ComponentVersion&, const ComponentVersion&) = default;
};

} // namespace tessera
