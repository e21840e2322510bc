// lateEntry: a call of the system that is looked up while the program runs, as not every system has it.
#pragma once

#include <windows.h>

namespace tessera::platform {

// Null when the library isn't loaded or lacks the entry. Only libraries that every process has are asked for, so
// nothing is kept loaded by this.
template <class Entry>
Entry lateEntry(const wchar_t* library, const char* name) {
    const HMODULE module = GetModuleHandleW(library);
    return module != nullptr ? reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(module, name))) : nullptr;
}

} // namespace tessera::platform
