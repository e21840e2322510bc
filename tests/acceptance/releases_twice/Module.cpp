// A module that gives back what it never took.
#include "acceptance/BrokenModule.h"
#include "shell/hostapi/ISelection.h"

namespace {

using namespace tessera;

class Guest final : public broken::Plugin {
    FResult initialize(IBaseUnknown* context) override {
        ISelection* const selection = service<ISelection>(context);
        selection->release();
        selection->release();
        return kResultOk;
    }
};

} // namespace

extern "C" [[gnu::visibility("default")]] tessera::IModuleFactory* GetPluginFactory() {
    return new broken::Factory<Guest>("Service");
}
