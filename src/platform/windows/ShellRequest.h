// ShellRequest: what the desktop is asked to open, as the system's call takes it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessera::platform {

struct ShellRequest {
    std::wstring file;
    // Empty for none.
    std::wstring parameters;
};

// The document itself. Nothing for a path that isn't absolute, which would be searched for among the programs.
std::optional<ShellRequest> documentRequest(std::u16string_view path);
// The program that shows folders, with the file selected. Nothing for a path that isn't absolute.
std::optional<ShellRequest> selectionRequest(std::u16string_view path);
// Nothing for a text that names no scheme, which would be taken for a file or a program.
std::optional<ShellRequest> addressRequest(std::string_view address);

} // namespace tessera::platform
