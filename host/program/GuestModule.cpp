#include "host/program/GuestModule.h"

#include "foundation/object/FRefPtr.h"
#include "host/objects/GuestCall.h"
#include "shell/hostapi/ClassInfo.h"
#include "shell/hostapi/ClassInfoEx.h"
#include "shell/hostapi/FactoryInfo.h"
#include "shell/hostapi/IModuleFactory2.h"
#include "shell/hostapi/ModuleExports.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace tessera::host {
namespace {

// A text that fills its field has no zero.
template <std::size_t size>
std::string fieldText(const char (&field)[size]) {
    return std::string(field, std::find(field, field + size, '\0'));
}

template <class Function>
Function functionOf(const platform::DynamicLibrary& library, const char* name) {
    return reinterpret_cast<Function>(library.symbol(name));
}

} // namespace

std::unique_ptr<GuestModule> GuestModule::load(std::shared_ptr<GuestWatch> watch, const std::string& path,
                                               Complaint* complaint) {
    std::string reason;
    std::optional<platform::DynamicLibrary> library = platform::DynamicLibrary::load(path.c_str(), &reason);
    if (!library) {
        *complaint = "the module \"" + path + "\" can't be loaded (" + reason + "); give another one with --module";
        return nullptr;
    }
    const auto getFactory = functionOf<GetPluginFactoryFunction>(*library, kGetPluginFactoryName);
    const auto initDll = functionOf<InitDllFunction>(*library, kInitDllName);
    if (getFactory == nullptr || (initDll != nullptr && !initDll())) {
        *complaint = "\"" + path + "\" is no module: it lacks the function " + kGetPluginFactoryName +
                     " or refused to start; give another one with --module";
        return nullptr;
    }
    std::unique_ptr<GuestModule> module(new GuestModule(std::move(watch), std::move(*library)));
    module->factory_ = getFactory();
    *complaint = module->factory_ == nullptr ? "the module \"" + path + "\" gave no factory" : module->findService();
    return complaint->empty() ? std::move(module) : nullptr;
}

GuestModule::GuestModule(std::shared_ptr<GuestWatch> watch, platform::DynamicLibrary library)
    : watch_(std::move(watch)), library_(std::move(library)) {}

GuestModule::~GuestModule() {
    stop();
    if (plugin_ != nullptr) {
        plugin_->release();
    }
    if (factory_ != nullptr) {
        factory_->release();
    }
    if (const auto exitDll = functionOf<ExitDllFunction>(library_, kExitDllName)) {
        exitDll();
    }
}

Complaint GuestModule::findService() {
    for (int index = 0; index < factory_->classCount(); ++index) {
        ClassInfo info;
        if (factory_->describeClass(index, &info) != kResultOk || fieldText(info.category) != kServiceCategory) {
            continue;
        }
        void* object = nullptr;
        if (factory_->createObject(info.classId, IBaseUnknown::iid, &object) != kResultOk || object == nullptr) {
            return "the module's class \"" + fieldText(info.name) + "\" could not be created";
        }
        plugin_ = static_cast<IPlugin*>(object);
        describe(index);
        return {};
    }
    return "the module offers no class of the category \"" + std::string(kServiceCategory) +
           "\"; it is for other hosts";
}

void GuestModule::describe(int index) {
    FactoryInfo factoryInfo;
    factory_->describeFactory(&factoryInfo);
    ClassInfoEx info;
    const FRefPtr<IModuleFactory2> longer = queryFor<IModuleFactory2>(factory_);
    if (longer && longer->describeClassEx(index, &info) == kResultOk) {
        title_ = fieldText(info.name) + " " + fieldText(info.version) + " by " + fieldText(factoryInfo.vendor);
    }
}

Complaint GuestModule::start(IBaseUnknown* context) {
    if (isRunning_) {
        return "the module runs already";
    }
    watch_->setLife(GuestLife::running);
    const FResult result = callGuest(
        *watch_, "IPlugin.initialize", [&] { return plugin_->initialize(context); }, kResultFailure);
    isRunning_ = result == kResultOk;
    if (!isRunning_) {
        watch_->setLife(GuestLife::terminated);
        return "the module doesn't work in this host; start it as an admitted one with --name and --host-version";
    }
    return {};
}

void GuestModule::stop() {
    if (!isRunning_) {
        return;
    }
    callGuest(*watch_, "IPlugin.terminate", [&] { plugin_->terminate(); });
    isRunning_ = false;
    watch_->setLife(GuestLife::terminated);
    watch_->bury();
}

} // namespace tessera::host
