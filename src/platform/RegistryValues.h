// RegistryValues: texts that the user's registry keeps under a key and a value name.
//
// A key is a path of names with backslashes between them, such as u"Software\\Vendor\\Shared Components"; empty names
// in it count for nothing, and the empty key is the top. A key holds values and further keys, which may bear the same
// names; an empty value name is the key's own value. Every 16-bit text will do for a value, and for a name of at most
// 255 characters without a NUL; a system may have no room for others. Names that differ in case alone are one name in
// some systems and two in others: use one spelling.
//
// Where there is no registry, each value is a text file in the folder "Marlgrove/Registry" of the user's settings. A
// value changes as a whole: other processes, and whoever comes after a crash, see the old one or the new one. From any
// thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tessera::platform {

// No value is longer than this, in bytes of UTF-8.
inline constexpr std::size_t kLongestRegistryValue = std::size_t{1} << 20;

enum class RegistryScope {
    user,
    // Also what is there for all users, where the system has such values; the user's own come first.
    userAndMachine,
};

// Nothing when the value isn't there, or is no text.
std::optional<std::u16string> readRegistryValue(std::u16string_view key, std::u16string_view name,
                                                RegistryScope scope = RegistryScope::userAndMachine);

// The user's own value. False when it can't be written, or is longer than a value may be; the old one stands then.
bool writeRegistryValue(std::u16string_view key, std::u16string_view name, std::u16string_view text);

// The user's own value. True when it isn't there afterwards.
bool deleteRegistryValue(std::u16string_view key, std::u16string_view name);

} // namespace tessera::platform
