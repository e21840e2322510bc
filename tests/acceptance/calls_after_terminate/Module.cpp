// A module that goes on when it should be gone: its object calls the host from its destructor.
#include "acceptance/BrokenModule.h"
#include "shell/hostapi/ITransport.h"

namespace {

using namespace tessera;

class Guest final : public broken::Plugin {
public:
    ~Guest() override {
        transport_->locate(77);
        transport_->release();
    }
    FResult initialize(IBaseUnknown* context) override {
        transport_ = service<ITransport>(context);
        return kResultOk;
    }

private:
    ITransport* transport_ = nullptr;
};

} // namespace

extern "C" [[gnu::visibility("default")]] tessera::IModuleFactory* GetPluginFactory() {
    return new broken::Factory<Guest>("Service");
}
