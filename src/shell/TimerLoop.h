// TimerLoop: stands for the message loop that a module doesn't have: it has the host's idle calls run the timers that
// are due. The idle task, and with it everything that other threads post, runs through here. Main thread.
#pragma once

#include "shell/hostapi/IIdleClient.h"
#include "workflow/HostGuest.h"

namespace tessera {

class TimerLoop final : public HostGuest<IIdleClient> {
public:
    // The host calls between start and stop; a host without idle calls never does.
    void start();
    void stop();

    void onIdle() override;
};

} // namespace tessera
