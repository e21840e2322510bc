// DesktopOpener: has the user's desktop show files and addresses with the programs that it has for them.
//
// Nothing is waited for: true means that the desktop was asked. Path texts are 16-bit with backslashes, addresses
// UTF-8. From any thread.
#pragma once

#include <string>
#include <string_view>

namespace tessera::platform {

bool openDocument(std::u16string_view path);
// The folder that holds the file; with the file selected where the desktop can do that.
bool showInFolder(std::u16string_view path);
bool openAddress(const std::string& address);

} // namespace tessera::platform
