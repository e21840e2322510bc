// A module with a thread that speaks to the host.
#include "acceptance/BrokenModule.h"
#include "shell/hostapi/ITransport.h"

#include <thread>

namespace {

using namespace tessera;

class Guest final : public broken::Plugin {
    FResult initialize(IBaseUnknown* context) override {
        ITransport* const transport = service<ITransport>(context);
        std::thread([&] { transport->locate(77); }).join();
        transport->release();
        return kResultOk;
    }
};

} // namespace

extern "C" [[gnu::visibility("default")]] tessera::IModuleFactory* GetPluginFactory() {
    return new broken::Factory<Guest>("Service");
}
