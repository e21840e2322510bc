// The three functions that the module exports, and what happens when it is loaded. Nothing else of it can be seen from
// outside: the linker's list of exports names these three.
#include "shell/ModuleClasses.h"
#include "shell/ModuleGlobals.h"
#include "shell/hostapi/IModuleFactory.h"

namespace {

// Runs while the module is loaded, as part of its static initialisation.
const bool loaded = [] {
    tessera::noteModuleLoad();
    return true;
}();

} // namespace

extern "C" {

tessera::IModuleFactory* GetPluginFactory() {
    return tessera::getModuleFactory();
}

// All set-up is done later, by the service object.
bool InitDll() {
    return loaded;
}

bool ExitDll() {
    return true;
}
}
