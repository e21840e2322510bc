#include "link/IdlePump.h"

#include "foundation/object/FRefPtr.h"
#include "shell/hostapi/IIdleHost.h"
#include "workflow/HostBorder.h"
#include "workflow/HostServices.h"

namespace tessera {

IdlePump::IdlePump(std::function<void()> onIdle) : onIdle_(std::move(onIdle)) {
    if (const auto host = queryService<IIdleHost>()) {
        host->addClient(this);
    }
}

void IdlePump::stop() {
    if (!onIdle_) {
        return;
    }
    if (const auto host = queryService<IIdleHost>()) {
        host->removeClient(this);
    }
    onIdle_ = nullptr;
}

void IdlePump::onIdle() {
    if (!onIdle_) {
        return;
    }
    // The function may close the link, and with it end this pump.
    const FRefPtr<IdlePump> alive(this);
    atHostBorder([function = onIdle_] { function(); });
}

} // namespace tessera
