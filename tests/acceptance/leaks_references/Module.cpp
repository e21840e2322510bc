// A module that keeps what it was given.
#include "acceptance/BrokenModule.h"
#include "shell/hostapi/ISelection.h"

namespace {

using namespace tessera;

class Guest final : public broken::Plugin {
    FResult initialize(IBaseUnknown* context) override {
        service<ISelection>(context);
        service<ISelection>(context);
        return kResultOk;
    }
};

} // namespace

extern "C" [[gnu::visibility("default")]] tessera::IModuleFactory* GetPluginFactory() {
    return new broken::Factory<Guest>("Service");
}
