// IdlePump: has the host's idle calls run one function, from construction to stop. Main thread.
#pragma once

#include "shell/hostapi/IIdleClient.h"
#include "workflow/HostGuest.h"

#include <functional>

namespace tessera {

class IdlePump final : public HostGuest<IIdleClient> {
public:
    // A host without idle calls never runs it.
    explicit IdlePump(std::function<void()> onIdle);

    // Ends the calls. A separate step, before the last release: a host that takes a reference while it looks for the
    // client would otherwise bring an object back that is already going.
    void stop();

    // What the function throws ends here.
    void onIdle() override;

private:
    ~IdlePump() override = default;

    std::function<void()> onIdle_;
};

} // namespace tessera
