// A module for another kind of host.
#include "acceptance/BrokenModule.h"

extern "C" [[gnu::visibility("default")]] tessera::IModuleFactory* GetPluginFactory() {
    return new tessera::broken::Factory<tessera::broken::Plugin>("Audio Effect");
}
