// TimeParameter: one time of the transport, in seconds.
#pragma once

#include "host/objects/HostCore.h"
#include "host/objects/HostObject.h"
#include "shell/hostapi/ITimeValue.h"

#include <memory>

namespace tessera::host {

class TimeParameter final : public HostObject<TimeParameter, ITimeValue> {
public:
    explicit TimeParameter(const std::shared_ptr<HostCore>& core) : HostObject(core->watch, "TimeParameter") {}

    double seconds() const { return seconds_; }
    void set(double seconds) { seconds_ = seconds; }

    FResult setValue(double seconds, std::int32_t) override {
        if (!guestMay("setValue")) {
            return kResultFailure;
        }
        seconds_ = seconds;
        return kResultOk;
    }

private:
    double seconds_ = 0;
};

} // namespace tessera::host
