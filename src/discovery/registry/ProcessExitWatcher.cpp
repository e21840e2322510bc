#include "discovery/registry/ProcessExitWatcher.h"

#include "foundation/messages/FTaskList.h"

#include <memory>
#include <utility>

namespace tessera {

bool ProcessExitWatcher::watch(int processId, Callback ended) {
    // The number goes along: by the time the task runs, the watch may be for another process.
    const bool watching = watch_.start(processId, [processId, ended = std::move(ended)] {
        FTaskList::process().post([processId, ended] { ended(processId); });
    });
    processId_ = watching ? processId : kNone;
    return watching;
}

void ProcessExitWatcher::stop() {
    watch_.stop();
    processId_ = kNone;
}

} // namespace tessera
