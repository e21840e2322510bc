// Transport: the play position and the cycle.
#pragma once

#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "host/services/TimeParameter.h"
#include "shell/hostapi/ITransport.h"

#include <memory>
#include <string_view>

namespace tessera::host {

class Transport final : public HostObject<Transport, UnusedSlots<ITransport>> {
public:
    explicit Transport(const std::shared_ptr<HostCore>& core)
        : HostObject(core->watch, "Transport"),
          cycleLeft_(std::make_shared<TimeParameter>(core)),
          cycleRight_(std::make_shared<TimeParameter>(core)) {}

    double position() const { return position_; }
    TimeParameter& cycleLeft() { return *cycleLeft_; }
    TimeParameter& cycleRight() { return *cycleRight_; }

    void locate(double seconds) override {
        if (guestMay("locate")) {
            position_ = seconds;
        }
    }
    IBaseUnknown* parameter(const char* name) override {
        if (!guestMay("parameter") || name == nullptr) {
            return nullptr;
        }
        const std::string_view wanted = name;
        if (wanted == "cycleLeftTime") {
            return cycleLeft_->unknown();
        }
        return wanted == "cycleRightTime" ? cycleRight_->unknown() : nullptr;
    }

private:
    void unusedSlotCalled(const char* interfaceName, int slot) override { reportReserved(interfaceName, slot); }

    const std::shared_ptr<TimeParameter> cycleLeft_;
    const std::shared_ptr<TimeParameter> cycleRight_;
    double position_ = 0;
};

} // namespace tessera::host
