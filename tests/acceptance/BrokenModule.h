// What the broken modules of the folders beside this have in common: a factory with one service class, whose object
// does what its module says. Everything else a decent module would do is left out.
#pragma once

#include "shell/hostapi/ClassInfo.h"
#include "shell/hostapi/FactoryInfo.h"
#include "shell/hostapi/IHostServices.h"
#include "shell/hostapi/IModuleFactory.h"
#include "shell/hostapi/IPlugin.h"
#include "support/Counted.h"

#include <cstring>

namespace tessera::broken {

using test::Counted;

class Plugin : public Counted<IPlugin> {
public:
    FResult initialize(IBaseUnknown*) override { return kResultOk; }
    FResult terminate() override { return kResultOk; }

protected:
    // With a reference, or null.
    template <class Interface>
    static Interface* service(IBaseUnknown* context) {
        void* services = nullptr;
        void* found = nullptr;
        if (context->queryInterface(IHostServices::iid, &services) == kResultOk) {
            static_cast<IHostServices*>(services)->queryService(Interface::iid, &found);
            static_cast<IHostServices*>(services)->release();
        }
        return static_cast<Interface*>(found);
    }
};

template <class PluginClass>
class Factory final : public Counted<IModuleFactory> {
public:
    explicit Factory(const char* category) : category_(category) {}

    FResult describeFactory(FactoryInfo* info) override {
        *info = {};
        return kResultOk;
    }
    std::int32_t classCount() override { return 1; }
    FResult describeClass(std::int32_t, ClassInfo* info) override {
        *info = {};
        std::strncpy(info->category, category_, sizeof info->category - 1);
        std::strncpy(info->name, "Broken", sizeof info->name - 1);
        return kResultOk;
    }
    FResult createObject(const FUIDBytes&, const FUIDBytes&, void** out) override {
        *out = static_cast<IPlugin*>(new PluginClass);
        return kResultOk;
    }

private:
    const char* const category_;
};

} // namespace tessera::broken
