// PluginBase: an object that a host drives through IPlugin: the object side first, the plug-in's own table second.
//
// Asked for IBaseUnknown it gives the plug-in's table, on which the host goes on. Main thread.
#pragma once

#include "foundation/object/FObject.h"
#include "shell/hostapi/IPlugin.h"

namespace tessera {

class PluginBase : public FObject, public IPlugin {
public:
    FResult queryInterface(const FUIDBytes& uid, void** out) override;
    std::uint32_t addRef() override { return addReference(); }
    std::uint32_t release() override { return releaseReference(); }
    const char* getClassName() const override;
    bool isTypeOf(const char* className, bool askBase) const override;

    // Takes the host's services from the context and goes on to onInitialize. kResultFalse without services.
    FResult initialize(IBaseUnknown* hostContext) override;
    FResult terminate() override { return kResultOk; }

protected:
    virtual FResult onInitialize() { return kResultOk; }

    // The context's services into the process-wide pointer; whether there are any.
    static bool fetchServices(IBaseUnknown* hostContext);
};

} // namespace tessera
