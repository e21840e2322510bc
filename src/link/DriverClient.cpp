#include "link/DriverClient.h"

#include "shell/hostapi/IDriverArbiter.h"
#include "workflow/HostBorder.h"
#include "workflow/HostServices.h"
#include "workflow/IPeerLink.h"

namespace tessera {

DriverClient& DriverClient::instance() {
    static const FRefPtr<DriverClient> client = FRefPtr<DriverClient>::adopt(new DriverClient);
    return *client;
}

void DriverClient::start(IPeerLink* peerLink) {
    if (const auto arbiter = queryService<IDriverArbiter>()) {
        arbiter->addClient(this);
    }
    peerLink_ = peerLink;
}

void DriverClient::stop() {
    peerLink_ = nullptr;
    if (const auto arbiter = queryService<IDriverArbiter>()) {
        arbiter->removeClient(this);
    }
}

std::int32_t DriverClient::requestRelease(const std::string& text) {
    const auto arbiter = queryService<IDriverArbiter>();
    return arbiter ? arbiter->requestRelease(this, text.c_str()) : -1;
}

FResult DriverClient::suspend(void*, const char16_t* text) {
    if (peerLink_ != nullptr) {
        atHostBorder([&] { peerLink_->suspendDriver(text); });
    }
    return kResultOk;
}

} // namespace tessera
