// ThreadTimer: a timer that belongs to the thread which made it, and ticks from that thread's own loop.
//
// Each period it becomes due once; periods that the loop misses are not made up for. On Windows the ticks come through
// the thread's message loop, if it has one; nothing that such a tick throws gets any further. On Linux, and on Windows
// where no message loop runs, they come out of runDueTimers. Where there are both, a period has one tick still. Made,
// destroyed and run on one thread alone; a timer may destroy itself, or others, from inside its tick.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace tessera::platform {

class ThreadTimer {
public:
    using Tick = std::function<void()>;

    ThreadTimer(std::uint32_t periodMs, Tick tick);
    ThreadTimer(const ThreadTimer&) = delete;
    ThreadTimer& operator=(const ThreadTimer&) = delete;
    ~ThreadTimer();

    // Whether the platform gave a timer; one that didn't start never ticks.
    bool isRunning() const;

    class State;

private:
    std::shared_ptr<State> state_;
};

// Runs the due timers of the calling thread, each once at most, in the order in which they became due. How many ran.
int runDueTimers();

// Milliseconds until the next timer of the calling thread is due: 0 when one is due now, -1 when there is none. What a
// loop may sleep.
std::int64_t millisecondsToNextTimer();

} // namespace tessera::platform
