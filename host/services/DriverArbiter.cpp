#include "host/services/DriverArbiter.h"

#include "host/objects/GuestCall.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"
#include "host/text/Text16.h"

#include <algorithm>
#include <utility>

namespace tessera::host {

DriverArbiter::DriverArbiter(std::shared_ptr<HostCore> core)
    : HostObject(core->watch, "DriverArbiter"), core_(std::move(core)) {}

void DriverArbiter::suspendClients(const std::string& text) {
    const std::u16string text16 = toText16(text).value_or(u"");
    const std::vector<FRefPtr<IDriverClient>> told = clients_;
    for (const auto& client : told) {
        callGuest(*watch(), "IDriverClient.suspend", [&] { client->suspend(nullptr, text16.c_str()); });
    }
    hostHasDriver_ = true;
}

FResult DriverArbiter::addClient(IDriverClient* client) {
    if (!guestMay("addClient") || client == nullptr) {
        return kInvalidArgument;
    }
    clients_.emplace_back(client);
    return kResultOk;
}

FResult DriverArbiter::removeClient(IDriverClient* client) {
    const bool removed = guestMayLate("removeClient") &&
                         std::erase_if(clients_, [&](const auto& held) { return held.get() == client; }) > 0;
    return removed ? kResultOk : kResultFalse;
}

std::int32_t DriverArbiter::requestRelease(IDriverClient* client, const char* text) {
    if (!guestMay("requestRelease")) {
        return kResultFailure;
    }
    const bool isKnown =
        std::any_of(clients_.begin(), clients_.end(), [&](const auto& held) { return held == client; });
    if (!isKnown) {
        reportMisuse("requestRelease", "the client was never added");
        return kResultFailure;
    }
    hostHasDriver_ = false;
    core_->note(message(hostTexts.driverReleased, text == nullptr ? "" : text));
    return kResultOk;
}

} // namespace tessera::host
