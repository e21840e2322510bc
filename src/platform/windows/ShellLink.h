// ShellLink: the files by which the desktop shows links, ".lnk". From any thread; each call brings up the component
// library for itself if the thread hasn't.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tessera::platform {

// Both paths in the system's form; a relative target lies behind the folder of the link. Fails where the name is taken,
// and for a target of 260 characters or more, which no link can say.
bool saveShellLink(const std::wstring& path, const std::wstring& target, std::int32_t& error);

// The absolute path that the link says; nothing for what is no such file, or one to something that is no file.
std::optional<std::wstring> loadShellLink(const std::wstring& path);

} // namespace tessera::platform
