// NativePath: paths between the framework's form and the system's own.
//
// The framework's form is 16-bit text with backslashes. The system's own form goes as UTF-8: with "/" where that is the
// separator, else with backslashes. Not every text has both: where the system knows no drives a drive path has none,
// nor has a file name there that holds a backslash or bytes that are no UTF-8. Any length; may be called from any
// thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessera::platform {

// Whether a single leading separator is the root of the whole file tree, as it is where there are no drives.
bool hasSingleRoot();

// Between the components of the system's own form.
char16_t nativeSeparator();

// Without a separator at the end, but for a root. Nothing for an empty text, one that holds a NUL or half a surrogate
// pair, and a drive path where there are no drives.
std::optional<std::string> toNativePath(std::u16string_view path);

// The same for a text of the system: a path, or a single name. Separators at the end stay. Nothing where the text has
// no form of ours.
std::optional<std::u16string> fromNativePath(std::string_view native);

} // namespace tessera::platform
