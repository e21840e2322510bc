#include "platform/ThreadTimer.h"

#include "platform/TimerMessages.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace tessera::platform {
namespace {

using Clock = std::chrono::steady_clock;

} // namespace

class ThreadTimer::State {
public:
    State(std::uint32_t periodMs, Tick function)
        : period(periodMs), due(Clock::now() + period), tick(std::move(function)) {}

    std::chrono::milliseconds period;
    Clock::time_point due;
    Tick tick;
    // The system's own timer.
    std::uintptr_t messages = 0;
    // Since the system's timer has told of its period for the last time.
    bool tickedWithoutMessage = false;
    // Cleared when the timer goes, which may be in the middle of a run of the loop.
    bool alive = true;
};

namespace {

using Timers = std::vector<std::shared_ptr<ThreadTimer::State>>;

// The calling thread's timers in no order that matters, or null. A plain pointer, and a list that goes with its last
// timer: a timer may well be destroyed when the thread's own variables are gone, at the end of the process.
thread_local constinit Timers* threadTimers = nullptr;

// The loop that gets the thread's messages has its turn: the timer ticks, unless it has ticked for this period already.
void timerMessage(std::uintptr_t messages) {
    if (threadTimers == nullptr) {
        return;
    }
    const auto found = std::find_if(threadTimers->begin(), threadTimers->end(),
                                    [messages](const auto& timer) { return timer->messages == messages; });
    if (found == threadTimers->end()) {
        return;
    }
    // Kept by this: the tick may destroy the timer.
    const std::shared_ptr<ThreadTimer::State> timer = *found;
    if (std::exchange(timer->tickedWithoutMessage, false)) {
        return;
    }
    timer->due = Clock::now() + timer->period;
    try {
        timer->tick();
    } catch (...) {
        // The system's frames, and the host's loop below them, are no place for it to pass through.
    }
}

} // namespace

ThreadTimer::ThreadTimer(std::uint32_t periodMs, Tick tick)
    : state_(std::make_shared<State>(periodMs, std::move(tick))) {
    state_->messages = startTimerMessages(periodMs, timerMessage);
    if (!isRunning()) {
        return;
    }
    if (threadTimers == nullptr) {
        threadTimers = new Timers;
    }
    threadTimers->push_back(state_);
}

ThreadTimer::~ThreadTimer() {
    state_->alive = false;
    if (isRunning()) {
        stopTimerMessages(state_->messages);
    }
    if (threadTimers == nullptr) {
        return;
    }
    std::erase(*threadTimers, state_);
    if (threadTimers->empty()) {
        delete std::exchange(threadTimers, nullptr);
    }
}

bool ThreadTimer::isRunning() const {
    return state_->messages != 0;
}

int runDueTimers() {
    if (threadTimers == nullptr) {
        return 0;
    }
    const Clock::time_point now = Clock::now();
    // Ticks make and destroy timers, so the run goes over a list of its own; it keeps the state, and with it the
    // function that is just running, alive.
    Timers dueTimers;
    std::copy_if(threadTimers->begin(), threadTimers->end(), std::back_inserter(dueTimers),
                 [now](const auto& timer) { return timer->due <= now; });
    std::stable_sort(dueTimers.begin(), dueTimers.end(), [](const auto& a, const auto& b) { return a->due < b->due; });
    int count = 0;
    for (const auto& timer : dueTimers) {
        // A tick that runs the loop again has the later ones told there already.
        if (!timer->alive || timer->due > now) {
            continue;
        }
        timer->due = now + timer->period;
        timer->tickedWithoutMessage = true;
        timer->tick();
        ++count;
    }
    return count;
}

std::int64_t millisecondsToNextTimer() {
    if (threadTimers == nullptr) {
        return -1;
    }
    const auto next = std::min_element(threadTimers->begin(), threadTimers->end(),
                                       [](const auto& a, const auto& b) { return a->due < b->due; });
    // Rounded up: whoever sleeps that long finds the timer due.
    const auto left = std::chrono::ceil<std::chrono::milliseconds>((*next)->due - Clock::now());
    return std::max<std::int64_t>(0, left.count());
}

} // namespace tessera::platform
