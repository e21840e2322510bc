// A module that holds this source stays loaded to the end of the process, whoever gives it back: what its singletons
// hold, and what waits for them, lives as long. Elsewhere a flag of the linker says the same.
#include <windows.h>

namespace {

struct StaysLoaded {
    StaysLoaded() {
        HMODULE module = nullptr;
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                           reinterpret_cast<const wchar_t*>(this), &module);
    }
};

const StaysLoaded staysLoaded;

} // namespace
