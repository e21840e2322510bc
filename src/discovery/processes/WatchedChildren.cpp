#include "discovery/processes/WatchedChildren.h"

#include "discovery/processes/ChildProcess.h"
#include "discovery/processes/MonitorThread.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/threads/FLockGuard.h"

#include <algorithm>
#include <utility>

namespace tessera {

WatchedChildren& WatchedChildren::instance() {
    // Never destroyed: the monitor may still look at it while the process goes down.
    static WatchedChildren* const children = new WatchedChildren;
    return *children;
}

void WatchedChildren::add(ChildProcess* child) {
    const FLockGuard guard(lock_);
    if (std::find(children_.begin(), children_.end(), child) == children_.end()) {
        children_.push_back(child);
        updateCount();
    }
    if (monitor_ == nullptr) {
        monitor_ = new MonitorThread;
        monitor_->start();
        if (!monitor_->getHandle()) {
            std::exchange(monitor_, nullptr)->release();
        }
    }
}

void WatchedChildren::remove(ChildProcess* child) {
    const FLockGuard guard(lock_);
    std::erase(children_, child);
    updateCount();
}

void WatchedChildren::waitIfEmpty() {
    constexpr std::uint32_t kLongestWaitMs = 1000;
    FRefPtr<MonitorThread> monitor;
    {
        const FLockGuard guard(lock_);
        if (!children_.empty()) {
            return;
        }
        monitor = monitor_;
    }
    // A listener that deletes its child is on that very thread.
    if (monitor && !monitor->isCurrent()) {
        monitor->join(kLongestWaitMs);
    }
}

bool WatchedChildren::hasMonitor() {
    const FLockGuard guard(lock_);
    return monitor_ != nullptr;
}

void WatchedChildren::checkAll() {
    if (!lock_.tryLock()) {
        return;
    }
    // Over a copy: a listener may start, end and delete children, those further down among them.
    const std::vector<ChildProcess*> present = children_;
    for (ChildProcess* child : present) {
        if (std::find(children_.begin(), children_.end(), child) == children_.end() || !child->dropIfEnded()) {
            continue;
        }
        // Before the listener is told, so that it may start the child anew.
        remove(child);
        child->tellEnd();
    }
    lock_.unlock();
}

bool WatchedChildren::retireMonitor() {
    const FLockGuard guard(lock_);
    if (!children_.empty()) {
        return false;
    }
    std::exchange(monitor_, nullptr)->release();
    return true;
}

} // namespace tessera
