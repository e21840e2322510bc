// ProcessExitWatcher: tells when one process has ended.
//
// A single process at a time: a further one takes the place of the first. The function is called from the list of small
// tasks, so on the thread of the idle task; the owner sees to it that it may still be called then. Main thread.
#pragma once

#include "platform/ProcessEndWatch.h"

#include <functional>

namespace tessera {

class ProcessExitWatcher {
public:
    using Callback = std::function<void(int processId)>;

    static constexpr int kNone = -1;

    // False when there is no such process, or it can't be watched.
    bool watch(int processId, Callback ended);
    // A task that stands in the list by then still comes.
    void stop();

    int processId() const { return processId_; }

private:
    platform::ProcessEndWatch watch_;
    int processId_ = kNone;
};

} // namespace tessera
