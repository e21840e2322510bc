#include "shell/TimerLoop.h"

#include "platform/ThreadTimer.h"
#include "shell/hostapi/IIdleHost.h"
#include "workflow/HostBorder.h"
#include "workflow/HostServices.h"

namespace tessera {

void TimerLoop::start() {
    if (const auto host = queryService<IIdleHost>()) {
        host->addClient(this);
    }
}

void TimerLoop::stop() {
    if (const auto host = queryService<IIdleHost>()) {
        host->removeClient(this);
    }
}

void TimerLoop::onIdle() {
    atHostBorder([] { platform::runDueTimers(); });
}

} // namespace tessera
