#include "platform/TemporaryFolder.h"

#include "platform/windows/WideText.h"

#include <algorithm>
#include <windows.h>

namespace tessera::platform {

std::string temporaryFolder() {
    wchar_t path[MAX_PATH] = {};
    const DWORD length = ::GetTempPathW(MAX_PATH, path);
    std::string folder = length < MAX_PATH ? utf8Of(std::wstring_view(path, length)) : std::string();
    std::replace(folder.begin(), folder.end(), '\\', '/');
    // A drive keeps its separator.
    while (folder.size() > 3 && folder.back() == '/') {
        folder.pop_back();
    }
    return folder;
}

} // namespace tessera::platform
