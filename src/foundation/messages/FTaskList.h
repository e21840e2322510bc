// FTaskList: the process-wide list of small tasks, by which other threads have something done on the thread of the idle
// task.
//
// post may be called from any thread at any time, static initialisation and process end included; runTasks belongs to
// the idle timer. Tasks run in the order in which they were posted, once, without a lock; what a task posts waits for
// the next turn. Tasks that nobody runs any more are forgotten.
#pragma once

#include "foundation/threads/FLock.h"

#include <functional>
#include <vector>

namespace tessera {

class FTaskList {
public:
    using Task = std::function<void()>;

    static FTaskList& process();

    FTaskList() = default;
    FTaskList(const FTaskList&) = delete;
    FTaskList& operator=(const FTaskList&) = delete;

    void post(Task task);
    // How many ran.
    std::size_t runTasks();

private:
    FLock lock_{"FLock"};
    std::vector<Task> tasks_;
};

} // namespace tessera
