// A module that admits nobody.
#include "acceptance/BrokenModule.h"

namespace {

using namespace tessera;

class Guest final : public broken::Plugin {
    FResult initialize(IBaseUnknown*) override { return kResultFalse; }
};

} // namespace

extern "C" [[gnu::visibility("default")]] tessera::IModuleFactory* GetPluginFactory() {
    return new broken::Factory<Guest>("Service");
}
