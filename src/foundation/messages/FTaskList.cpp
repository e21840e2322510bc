#include "foundation/messages/FTaskList.h"

#include "foundation/threads/FLockGuard.h"

#include <utility>

namespace tessera {

FTaskList& FTaskList::process() {
    // Never destroyed: a thread of the platform's may still post while the process ends.
    static FTaskList* const list = new FTaskList;
    return *list;
}

void FTaskList::post(Task task) {
    const FLockGuard guard(lock_);
    tasks_.push_back(std::move(task));
}

std::size_t FTaskList::runTasks() {
    std::vector<Task> turn;
    {
        const FLockGuard guard(lock_);
        turn.swap(tasks_);
    }
    for (const Task& task : turn) {
        task();
    }
    return turn.size();
}

} // namespace tessera
