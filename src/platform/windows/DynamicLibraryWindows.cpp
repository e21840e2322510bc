#include "platform/DynamicLibrary.h"

#include "platform/SystemErrors.h"
#include "platform/windows/NoErrorBoxes.h"
#include "platform/windows/SystemPath.h"

#include <windows.h>

#include <utility>

namespace tessera::platform {

std::optional<DynamicLibrary> DynamicLibrary::load(const char* path, std::string* error) {
    const NoErrorBoxes quiet;
    HMODULE handle = *path != '\0' ? LoadLibraryW(systemPath(std::string_view(path)).c_str()) : nullptr;
    if (handle != nullptr) {
        return DynamicLibrary(handle);
    }
    if (error != nullptr) {
        *error = *path != '\0' ? describeError(static_cast<std::int32_t>(GetLastError())) : "the path is empty";
    }
    return std::nullopt;
}

DynamicLibrary::~DynamicLibrary() {
    if (handle_ != nullptr) {
        FreeLibrary(static_cast<HMODULE>(handle_));
    }
}

void* DynamicLibrary::symbol(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

} // namespace tessera::platform
