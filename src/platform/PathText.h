// PathText: the characters of paths between the 16-bit form with backslashes and UTF-8, the same on every system. Which
// paths a system has is for NativePath to say.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessera::platform {

inline constexpr char16_t kPathSeparator = u'\\';

// With the system's separator for ours. Nothing for half a surrogate pair or a zero: no name of a file holds them.
std::optional<std::string> pathToUtf8(std::u16string_view path, char separator);

// With our separator for each slash. Nothing for invalid UTF-8 or a zero.
std::optional<std::u16string> pathFromUtf8(std::string_view native);

} // namespace tessera::platform
