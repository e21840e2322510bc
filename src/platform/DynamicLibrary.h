// DynamicLibrary: one loaded shared library.
//
// Move-only; the library is given back when the object goes. Loading binds all symbols at once, so a library that lacks
// something fails here and not later, and keeps its symbols to itself.
#pragma once

#include <optional>
#include <string>

namespace tessera::platform {

class DynamicLibrary {
public:
    // path: UTF-8, in the platform's form. Nothing when the library can't be loaded; the system's words for why go to
    // *error, if that isn't null.
    static std::optional<DynamicLibrary> load(const char* path, std::string* error = nullptr);

    DynamicLibrary(DynamicLibrary&& other) noexcept;
    DynamicLibrary& operator=(DynamicLibrary&& other) noexcept;
    ~DynamicLibrary();

    // Null when the library doesn't have it.
    void* symbol(const char* name) const;
    // The platform's own handle; it belongs to this object.
    void* handle() const { return handle_; }

private:
    explicit DynamicLibrary(void* handle) : handle_(handle) {}

    void* handle_;
};

} // namespace tessera::platform
