// KnownProducts: the products whose scripts count, and the oldest version of each that works.
#pragma once

#include "exportscripts/AudioExportScriptList.h"

#include <span>
#include <string_view>

namespace tessera {

struct ProductTable {
    std::span<const std::string_view> names;
    std::string_view minimumVersion;
    ScriptKind kind;
};

inline constexpr std::string_view kPeerNames[] = {"Tessera Max", "Tessera Lite"};
inline constexpr std::string_view kFirstHostNames[] = {"Harrow", "Harrow Max", "Harrow Mid", "Harrow Lite"};
inline constexpr std::string_view kSecondHostNames[] = {"Ostrey"};

// Names are matched byte for byte.
inline constexpr ProductTable kKnownProducts[] = {
    {kPeerNames, "9.0.0", ScriptKind::peers},
    {kFirstHostNames, "8.5.10", ScriptKind::hosts},
    {kSecondHostNames, "7.1.20", ScriptKind::hosts},
};

} // namespace tessera
