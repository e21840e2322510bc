// Languages: which language the machine and its user speak, and which units of measure are usual where they live.
//
// A language is the primary language number of Windows, the low ten bits of its language identifiers: 9 is English, 7
// German. 0 stands for a language that the system doesn't tell or that has no number here. Any thread; the answer can
// change with the environment, so callers who need a steady one keep it.
#pragma once

#include <cstdint>

namespace tessera::platform {

// What the machine is set up for.
std::uint16_t systemLanguage();

// What the user wants to read.
std::uint16_t userLanguage();

enum class Measures { unknown, metric, american };

Measures usualMeasures();

} // namespace tessera::platform
