// systemFolderValue: a folder as the machine's registry keeps it beside the version of the system, for where the
// system's own calls don't give it.
#pragma once

#include <optional>
#include <string>

namespace tessera::platform {

// The value of that name as text of at most 260 bytes; nothing for a longer one, another type, or none.
std::optional<std::u16string> systemFolderValue(const wchar_t* name);

} // namespace tessera::platform
