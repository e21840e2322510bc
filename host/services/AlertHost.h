// AlertHost: shows messages to the user, which in this host means that they are printed and answered at once.
#pragma once

#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"
#include "host/text/Text16.h"
#include "shell/hostapi/IAlertHost.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tessera::host {

class AlertHost final : public HostObject<AlertHost, IAlertHost> {
public:
    explicit AlertHost(std::shared_ptr<HostCore> core) : HostObject(core->watch, "AlertHost"), core_(std::move(core)) {}

    const std::vector<std::string>& shown() const { return shown_; }

    std::int32_t show(const char16_t* message, const char16_t* button, std::int64_t, std::int64_t) override {
        if (!guestMay("show") || message == nullptr || button == nullptr) {
            return 0;
        }
        shown_.push_back(toUtf8(message).value_or(""));
        core_->note(host::message(hostTexts.alert, shown_.back(), toUtf8(button).value_or("")));
        return 0;
    }

private:
    const std::shared_ptr<HostCore> core_;
    std::vector<std::string> shown_;
};

} // namespace tessera::host
