// WatchedChildren: the children with a listener, and the one MonitorThread that looks after them as long as there are
// any. One object for the process, for its whole life.
#pragma once

#include "foundation/threads/FLock.h"

#include <atomic>
#include <cstddef>
#include <vector>

namespace tessera {

class ChildProcess;
class MonitorThread;

class WatchedChildren {
public:
    static WatchedChildren& instance();

    // Starts the monitor if there is none.
    void add(ChildProcess* child);
    // Waits for a listener that is being told just now, unless it is the one that calls.
    void remove(ChildProcess* child);
    // If nobody is watched any more, waits up to a second for the monitor's end.
    void waitIfEmpty();

    bool isEmpty() const { return count_.load() == 0; }
    bool hasMonitor();

    // For the monitor. One look at every child; skipped while somebody else holds the lock.
    void checkAll();
    // Gives the monitor up when there is still nobody to watch. True: the thread has to end, its object may be gone.
    bool retireMonitor();

private:
    WatchedChildren() = default;
    void updateCount() { count_.store(children_.size()); }

    FLock lock_{"FLock"}; // guards children_ and monitor_
    std::vector<ChildProcess*> children_;
    std::atomic<std::size_t> count_{0}; // of children_, for looking without the lock
    MonitorThread* monitor_ = nullptr;  // with one reference
};

} // namespace tessera
