// DriverClient: the module's side of the audio-driver hand-over between host and peer. One per process. Main thread.
#pragma once

#include "foundation/object/FRefPtr.h"
#include "shell/hostapi/IDriverClient.h"
#include "workflow/HostGuest.h"

#include <string>

namespace tessera {

struct IPeerLink;

class DriverClient final : public HostGuest<IDriverClient> {
public:
    static DriverClient& instance();

    // The host's arbiter knows of the client between start and stop. The link outlives stop.
    void start(IPeerLink* peerLink);
    void stop();

    // Has the host give up the driver, before this returns. What the host answers, or -1 without an arbiter.
    std::int32_t requestRelease(const std::string& text);

    // The host wants the driver back: the peer is asked, and waited for. Always 0.
    FResult suspend(void* unused, const char16_t* text) override;
    FResult reserved4() override { return kResultOk; }

private:
    DriverClient() = default;

    IPeerLink* peerLink_ = nullptr;
};

} // namespace tessera
