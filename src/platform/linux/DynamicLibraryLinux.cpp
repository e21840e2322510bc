#include "platform/DynamicLibrary.h"

#include <dlfcn.h>
#include <utility>

namespace tessera::platform {

std::optional<DynamicLibrary> DynamicLibrary::load(const char* path, std::string* error) {
    // An empty path would give the program itself, which is no library that anybody asked for.
    void* handle = *path != '\0' ? dlopen(path, RTLD_NOW | RTLD_LOCAL) : nullptr;
    if (handle != nullptr) {
        return DynamicLibrary(handle);
    }
    if (error != nullptr) {
        const char* reason = *path != '\0' ? dlerror() : nullptr;
        *error = reason != nullptr ? reason : "the path is empty";
    }
    return std::nullopt;
}

DynamicLibrary::~DynamicLibrary() {
    if (handle_ != nullptr) {
        dlclose(handle_);
    }
}

void* DynamicLibrary::symbol(const char* name) const {
    return dlsym(handle_, name);
}

} // namespace tessera::platform
