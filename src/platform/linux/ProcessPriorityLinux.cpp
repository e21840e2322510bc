#include "platform/ProcessPriority.h"

#include "platform/Threads.h"
#include "platform/linux/Niceness.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <sys/resource.h>
#include <vector>

namespace tessera::platform {

namespace {

// The system knows no classes; a process starts in the normal one.
std::atomic<std::uint32_t> currentClass{kNormalClass};

constexpr int kMostThreads = 4096;

struct Change {
    id_t thread;
    int before;
};

void undo(const std::vector<Change>& changes) {
    for (const Change& change : changes) {
        setpriority(PRIO_PROCESS, change.thread, change.before);
    }
}

// Nice values belong to threads here. A thread that ends meanwhile is none to worry about.
bool moveAllThreads(int by) {
    std::vector<std::uint32_t> ids(kMostThreads);
    const int count = listThreads(ids.data(), kMostThreads);
    std::vector<Change> changes;
    for (int i = 0; i < count; ++i) {
        errno = 0;
        const int before = getpriority(PRIO_PROCESS, ids[i]);
        if (errno != 0) {
            continue;
        }
        if (setpriority(PRIO_PROCESS, ids[i], clampNiceness(before + by)) == 0) {
            changes.push_back({ids[i], before});
        } else if (errno != ESRCH) {
            undo(changes);
            return false;
        }
    }
    return count > 0;
}

} // namespace

std::uint32_t processClass() {
    return currentClass.load();
}

bool setProcessClass(std::uint32_t processClass) {
    const std::optional<int> wanted = classNiceness(processClass);
    if (!wanted || !moveAllThreads(*wanted - *classNiceness(currentClass.load()))) {
        return false;
    }
    currentClass.store(processClass);
    return true;
}

bool disablePriorityBoost(bool) {
    return false;
}

void abortQuietly() {
    std::abort();
}

} // namespace tessera::platform
