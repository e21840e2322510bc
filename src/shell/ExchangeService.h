// ExchangeService: the one class that the module exports: brings everything up in a host that is admitted, and takes it
// down again in the reverse sense.
//
// Inert after construction, in a host that isn't admitted, and after terminate; running in between. What it brings up
// (edit session, peer controller, driver client, service registry) lives to the end of the process and is brought up
// again by a later initialize. A service that the host lacks is passed over, and nothing is ever reported to the user.
// Main thread.
#pragma once

#include "discovery/events/IIPCSemaphore.h"
#include "foundation/messages/FIdleTimer.h"
#include "foundation/object/FRefPtr.h"
#include "shell/EditCommandHandler.h"
#include "shell/PluginBase.h"
#include "shell/TimerLoop.h"
#include "workflow/ExportListener.h"

#include <memory>

namespace tessera {

struct ServiceRecord;

class ExchangeService final : public PluginBase {
public:
    ExchangeService() = default;
    ExchangeService(const ExchangeService&) = delete;
    ExchangeService& operator=(const ExchangeService&) = delete;
    ~ExchangeService() override;

    // kResultFalse for a host that isn't admitted or offers no services. On a running service the event is set once
    // more and nothing else changes. The context is kept without a reference.
    FResult initialize(IBaseUnknown* hostContext) override;
    // The peer is told first. Always kResultOk.
    FResult terminate() override;

protected:
    FResult onInitialize() override;

private:
    // Has a peer that runs already let go of the audio driver.
    void broadcastRelease();
    void enterCommand();
    void joinRegistry();
    void leaveRegistry();
    void leaveHost();
    void peerFound(const ServiceRecord& record);
    void sendConnectionInfo(bool connected);

    // Held from the first initialize to terminate: the event lives as long as somebody has it open.
    FRefPtr<IIPCSemaphore> releaseBroadcast_;
    FRefPtr<EditCommandHandler> commandHandler_;
    FRefPtr<ExportListener> exportListener_;
    IBaseUnknown* hostContext_ = nullptr;
    bool initialized_ = false;
    // Registered before anything that needs timers, removed behind everything that does.
    FRefPtr<TimerLoop> timerLoop_;
    std::unique_ptr<FIdleTimer> idleTimer_;
};

} // namespace tessera
