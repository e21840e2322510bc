#include "shell/ExchangeService.h"

#include "discovery/registry/ServiceDiscovery.h"
#include "foundation/object/ClassFactory.h"
#include "link/DriverClient.h"
#include "link/PeerController.h"
#include "shell/HostAdmission.h"
#include "shell/ModuleGlobals.h"
#include "shell/hostapi/ICommandTable.h"
#include "shell/hostapi/ICommandTarget.h"
#include "shell/hostapi/IHostApplicationInfo.h"
#include "workflow/EditSession.h"
#include "workflow/HostBorder.h"
#include "workflow/HostServices.h"
#include "workflow/HostText.h"
#include "workflow/ProjectAccess.h"

#include <string>

namespace tessera {

namespace {

constexpr char kReleaseEvent[] = "broadcast_release_kite_driver";
constexpr char kMenuGroup[] = "Audio";

FRefPtr<IIPCSemaphore> createSemaphore() {
    ClassFactory* classes = ClassFactory::getInstance(true);
    return FRefPtr<IIPCSemaphore>::adopt(
        classes == nullptr ? nullptr : static_cast<IIPCSemaphore*>(classes->createInstance(IIPCSemaphore::iid)));
}

std::string textOf(const char* text) {
    return text == nullptr ? std::string() : std::string(text);
}

} // namespace

ExchangeService::~ExchangeService() {
    exportListener_.reset();
    commandHandler_.reset();
    releaseBroadcast_.reset();
}

FResult ExchangeService::initialize(IBaseUnknown* hostContext) {
    return atHostBorder(kResultFailure, [&] {
        hostContext_ = hostContext;
        if (!isHostAdmitted(queryFor<IHostApplicationInfo>(hostContext).get())) {
            return kResultFalse;
        }
        broadcastRelease();
        return PluginBase::initialize(hostContext);
    });
}

FResult ExchangeService::onInitialize() {
    if (initialized_) {
        return kResultOk;
    }
    timerLoop_ = FRefPtr<TimerLoop>::adopt(new TimerLoop);
    timerLoop_->start();
    EditSession& session = EditSession::instance();
    PeerController& peer = PeerController::instance();
    session.start(&peer);
    ProjectAccess::instance().setContext(hostContext_);
    DriverClient::instance().start(&peer);
    enterCommand();
    commandHandler_->setPeerLink(&peer);
    exportListener_ = FRefPtr<ExportListener>::adopt(new ExportListener);
    exportListener_->start([](const char16_t* path) { PeerController::instance().sendRenderedFile(utf8Of(path)); });
    idleTimer_ = std::make_unique<FIdleTimer>();
    joinRegistry();
    initialized_ = true;
    return kResultOk;
}

FResult ExchangeService::terminate() {
    if (!initialized_) {
        return kResultOk;
    }
    atHostBorder([&] { sendConnectionInfo(false); });
    leaveRegistry();
    leaveHost();
    EditSession::instance().stop();
    releaseBroadcast_.reset();
    timerLoop_->stop();
    timerLoop_.reset();
    initialized_ = false;
    return kResultOk;
}

void ExchangeService::broadcastRelease() {
    if (!releaseBroadcast_) {
        releaseBroadcast_ = createSemaphore();
    }
    if (releaseBroadcast_ && releaseBroadcast_->create(kReleaseEvent) == kResultOk) {
        releaseBroadcast_->signal();
    }
}

void ExchangeService::enterCommand() {
    if (const auto table = queryService<ICommandTable>()) {
        table->addCommand(moduleGlobals().handle, kMenuGroup, EditCommandHandler::kName16, 0,
                          EditCommandHandler::kCategory, EditCommandHandler::kName);
    }
    commandHandler_ = FRefPtr<EditCommandHandler>::adopt(new EditCommandHandler);
    const auto target = queryService<ICommandTarget>();
    if (target && target->addHandler(commandHandler_.get()) == kResultOk) {
        target->enableCommand(EditCommandHandler::kCategory, EditCommandHandler::kName);
    }
}

void ExchangeService::joinRegistry() {
    ServiceDiscovery& registry = ServiceDiscovery::getInstance();
    registry.start(kOwnServiceName);
    registry.observe(
        peerServiceId(), [this](const ServiceRecord& record) { peerFound(record); },
        [](const ServiceRecord&) { PeerController::instance().closeLink(); });
    registry.registerService(ownServiceId());
    // A malformed record ends the scan; this service runs all the same, and is told of whoever comes later.
    atHostBorder([&] { registry.scan(); });
}

void ExchangeService::leaveRegistry() {
    ServiceDiscovery& registry = ServiceDiscovery::getInstance();
    atHostBorder([&] { registry.unregisterService(ownServiceId()); });
    PeerController::instance().closeLink();
    PeerController::instance().stopPolling();
    atHostBorder([&] { registry.stopObserving(peerServiceId()); });
    registry.stop();
    idleTimer_.reset();
}

void ExchangeService::leaveHost() {
    exportListener_->stop();
    if (const auto target = queryService<ICommandTarget>()) {
        target->removeHandler(commandHandler_.get());
    }
    commandHandler_->setPeerLink(nullptr);
    if (const auto table = queryService<ICommandTable>()) {
        table->removeCommands(moduleGlobals().handle);
    }
    DriverClient::instance().stop();
    ProjectAccess::instance().setContext(nullptr);
}

void ExchangeService::peerFound(const ServiceRecord& record) {
    if (record.name == kOwnServiceName) {
        return;
    }
    PeerController::instance().openLink();
    sendConnectionInfo(true);
}

void ExchangeService::sendConnectionInfo(bool connected) {
    const auto host = queryFor<IHostApplicationInfo>(hostContext_);
    PeerController::instance().sendConnectionInfo(host ? textOf(host->name()) : std::string(),
                                                  host ? textOf(host->version()) : std::string(), connected);
}

} // namespace tessera
