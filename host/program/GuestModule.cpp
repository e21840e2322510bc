#include "host/program/GuestModule.h"

#include "common/Utf8Path.h"
#include "components/FModule.h"
#include "components/HostContext.h"
#include "foundation/text/FString.h"
#include "host/objects/GuestCall.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"
#include "host/text/Text16.h"
#include "persistence/paths/FNPath.h"
#include "platform/DynamicLibrary.h"
#include "platform/NativePath.h"
#include "shell/hostapi/ModuleExports.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <utility>

namespace tessera::host {
namespace {

// A text that fills its field has no zero.
template <std::size_t size>
std::string fieldText(const char (&field)[size]) {
    return std::string(field, std::find(field, field + size, '\0'));
}

std::string utf8Of(const FStringRef& text) {
    return toUtf8(FString(text).text16()).value_or(std::string());
}

FNPath pathOf(const std::filesystem::path& native, PathKind kind) {
    const std::optional<std::u16string> text = platform::fromNativePath(programs::utf8Text(native));
    return FNPath(FStringRef(text ? text->c_str() : u""), kind);
}

// Why the registry didn't take it: the library once more, step by step.
Complaint whyNoModule(const std::string& path) {
    std::string reason;
    const std::optional<platform::DynamicLibrary> library = platform::DynamicLibrary::load(path.c_str(), &reason);
    if (!library) {
        return message(hostTexts.moduleNotLoaded, path, reason);
    }
    const auto initDll = reinterpret_cast<InitDllFunction>(library->symbol(kInitDllName));
    if (library->symbol(kGetPluginFactoryName) == nullptr || (initDll != nullptr && !initDll())) {
        return message(hostTexts.noModule, path, kGetPluginFactoryName);
    }
    return message(hostTexts.noFactory, path);
}

} // namespace

std::unique_ptr<GuestModule> GuestModule::load(std::shared_ptr<GuestWatch> watch, IBaseUnknown* context,
                                               const std::string& path, Complaint* complaint) {
    std::unique_ptr<GuestModule> module(new GuestModule(std::move(watch)));
    setHostContext(context);
    *complaint = module->find(path);
    return complaint->empty() ? std::move(module) : nullptr;
}

GuestModule::GuestModule(std::shared_ptr<GuestWatch> watch)
    : watch_(std::move(watch)), registry_(FRefPtr<FComponentRegistry>::adopt(new FComponentRegistry)) {
    registry_->acceptCategory(kServiceCategory);
    registry_->acceptCategory("VirtualFileSystem");
    services_.addCategory(kServiceCategory, registry_.get());
}

GuestModule::~GuestModule() {
    stop();
    object_.reset();
    if (module_) {
        module_->unuse();
    }
    setHostContext(nullptr);
}

Complaint GuestModule::find(const std::string& path) {
    std::error_code ignored;
    const std::filesystem::path file = std::filesystem::canonical(programs::nativePath(path), ignored);
    const FNPath filter = pathOf(file, PathKind::file);
    if (registry_->scanFolder(pathOf(file.parent_path(), PathKind::folder), &filter) == 0) {
        return whyNoModule(path);
    }
    FComponentRegistry::Components services;
    if (!registry_->getCategory(kServiceCategory, services)) {
        return message(hostTexts.noClassOfCategory, kServiceCategory);
    }
    service_ = services.front();
    module_ = service_->getModule();
    // So that nothing that it does too late, by mistake, runs into code that is gone.
    module_->use();
    return {};
}

std::string GuestModule::title() const {
    return message(hostTexts.moduleTitle, utf8Of(service_->getName()), utf8Of(service_->getVersion()),
                   fieldText(module_->getInfo().vendor));
}

Complaint GuestModule::start() {
    if (isRunning()) {
        return message(hostTexts.moduleRuns);
    }
    watch_->setLife(GuestLife::running);
    // An earlier start may have been refused.
    service_->setAvailable(true);
    object_.reset();
    callGuest(*watch_, "IPlugin.initialize", [&] { services_.start(); });
    object_ = services_.getRunning(0);
    if (!isRunning()) {
        watch_->setLife(GuestLife::terminated);
        return message(hostTexts.hostNotAdmitted);
    }
    return {};
}

void GuestModule::stop() {
    if (!isRunning()) {
        return;
    }
    callGuest(*watch_, "IPlugin.terminate", [&] { services_.stop(); });
    watch_->setLife(GuestLife::terminated);
    watch_->bury();
}

} // namespace tessera::host
