// FIdleTimer: the idle task. Every 120 ms it tells the deferred changes, delivers the posted messages, tells what those
// have changed, and gives the process's small tasks their turn.
//
// It ticks on the thread that made it, from that thread's loop: on Windows the message loop, on Linux whoever calls
// platform::runDueTimers there. It is made and destroyed on one thread; destroying it ends the ticking.
#pragma once

#include "platform/ThreadTimer.h"

namespace tessera {

class FIdleTimer {
public:
    static constexpr unsigned kPeriodMs = 120;

    FIdleTimer();

    void setPaused(bool paused) { paused_ = paused; }
    bool isPaused() const { return paused_; }
    // One turn, whether paused or not; what the timer does when it isn't.
    static void runIdleTask();

private:
    void tick();

    bool paused_ = false;
    platform::ThreadTimer timer_;
};

} // namespace tessera
