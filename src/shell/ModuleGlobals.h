// ModuleGlobals: what the module knows of itself, filled when it is loaded. Main thread.
#pragma once

#include <string>
#include <string_view>

namespace tessera {

class ModuleFactory;

struct ModuleGlobals {
    // Marks the module's commands in the host's table.
    void* handle = nullptr;
    // Where the module's file lies, with backslashes and none at the end; empty when the system doesn't tell.
    std::u16string folder;
    // The one factory, null before the first GetPluginFactory and after the last release. No reference is held.
    ModuleFactory* factory = nullptr;
};

ModuleGlobals& moduleGlobals();

// Called once, while the module is loaded.
void noteModuleLoad();

// The folder of a file's full name, with backslashes; empty if the name holds none, or is longer than the 260 units
// that hosts have room for.
std::u16string folderOfModule(std::u16string_view fileName);

} // namespace tessera
