// IdleHost: the guests that want to be called when the host has time. Main thread.
#pragma once

#include "host/objects/GuestCall.h"
#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/IIdleClient.h"
#include "shell/hostapi/IIdleHost.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace tessera::host {

class IdleHost final : public HostObject<IdleHost, UnusedSlots<IIdleHost>> {
public:
    explicit IdleHost(const std::shared_ptr<HostCore>& core) : HostObject(core->watch, "IdleHost") {}

    std::size_t clientCount() const { return clients_.size(); }

    // One call for each client that is there when its turn comes: a client may take itself or others out.
    void callClients() {
        const std::vector<IIdleClient*> called = clients_;
        for (IIdleClient* client : called) {
            if (std::find(clients_.begin(), clients_.end(), client) != clients_.end()) {
                callGuest(*watch(), "IIdleClient.onIdle", [&] { client->onIdle(); });
            }
        }
    }

    FResult addClient(IIdleClient* client) override {
        if (!guestMay("addClient") || client == nullptr) {
            return kInvalidArgument;
        }
        clients_.push_back(client);
        return kResultOk;
    }
    FResult removeClient(IIdleClient* client) override {
        return guestMayLate("removeClient") && std::erase(clients_, client) > 0 ? kResultOk : kResultFalse;
    }

private:
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    std::vector<IIdleClient*> clients_;
};

} // namespace tessera::host
