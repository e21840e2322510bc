// VirtualPath: the texts of virtual paths, taken apart.
//
// A virtual path is scheme, ":" and two backslashes, rest. In the rest of a "vfs" path a double backslash parts the
// archive from what lies inside:
//
//     vfs:\\C:\a.pak\\b\c                   scheme "vfs", key "C:\a.pak", inside "b\c"
//     vfs:\\\tmp\a.pak                      key "\tmp\a.pak": the root of the archive
//     vfs:\\\\srv\share\a.pak\\b            key "\\srv\share\a.pak": an archive on a share
//     vfs:\\C:\a.pak\\sub\b.pak\\c          key "vfs:\\C:\a.pak\\sub\b.pak": an archive within an archive
//     kpssound:\\lib\x                      scheme "kpssound", key "LIB", inside "\x"
#pragma once

#include "foundation/text/FString.h"

#include <optional>
#include <string>
#include <string_view>

namespace tessera {

class FPath;

inline constexpr std::u16string_view kArchiveScheme = u"vfs";

// Starts with one of "kpssound:", "aurelix:", "axf:", "vfs:", "archive:". One of them further in means nothing.
bool isVirtualText(std::u16string_view text);
// Of a path object the folder is looked at, or the name where there is no folder; a URL with backslashes for its "/".
bool isVirtualPath(const FPath& path);
// The whole text of a path, that of a URL with backslashes for its "/".
std::u16string virtualTextOf(const FPath& path);

// Nothing without ":" and two backslashes, or with nothing in front of them.
std::optional<std::u16string> virtualScheme(std::u16string_view text);
std::optional<std::u16string> archiveKey(std::u16string_view text);
// What stands behind the key: for "vfs" relative to the archive's root, and empty for the root; for other schemes with
// its backslash in front, and a single one for the root. Empty, too, without a key.
std::u16string innerPath(std::u16string_view text);

} // namespace tessera
