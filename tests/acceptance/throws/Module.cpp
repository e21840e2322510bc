// A module that lets exceptions out.
#include "acceptance/BrokenModule.h"

#include <stdexcept>

namespace {

using namespace tessera;

class Guest final : public broken::Plugin {
    FResult initialize(IBaseUnknown*) override { return kResultOk; }
    FResult terminate() override { throw std::runtime_error("broken to the end"); }
};

} // namespace

extern "C" [[gnu::visibility("default")]] tessera::IModuleFactory* GetPluginFactory() {
    return new broken::Factory<Guest>("Service");
}
