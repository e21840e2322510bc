// DesktopFiles: what the user's desktop does with files: shortcuts and the trash. Paths are UTF-8, absolute, with "/"
// as the separator. From any thread. The error code is the system's own.
#pragma once

#include <string>
#include <system_error>

namespace tessera::platform {

// A shortcut to the target, in a file that mustn't be there yet.
std::error_code createShortcut(const std::string& target, const std::string& shortcut);

// Moves a file or folder to the user's trash, from where the desktop can bring it back. Nothing is ever deleted
// instead: where the trash isn't on the same volume, this fails.
std::error_code moveToTrash(const std::string& path);

} // namespace tessera::platform
