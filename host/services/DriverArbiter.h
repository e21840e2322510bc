// DriverArbiter: who has the audio driver, this host or a guest on behalf of another program. Main thread.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IDriverArbiter.h"
#include "shell/hostapi/IDriverClient.h"

#include <memory>
#include <string>
#include <vector>

namespace tessera::host {

class DriverArbiter final : public HostObject<DriverArbiter, IDriverArbiter> {
public:
    explicit DriverArbiter(std::shared_ptr<HostCore> core);

    bool hostHasDriver() const { return hostHasDriver_; }
    std::size_t clientCount() const { return clients_.size(); }
    // The host wants the driver: every client lets go of it.
    void suspendClients(const std::string& text);

    FResult addClient(IDriverClient* client) override;
    FResult removeClient(IDriverClient* client) override;
    std::int32_t requestRelease(IDriverClient* client, const char* text) override;

private:
    const std::shared_ptr<HostCore> core_;
    std::vector<FRefPtr<IDriverClient>> clients_;
    bool hostHasDriver_ = true;
};

} // namespace tessera::host
