#include "foundation/messages/FIdleTimer.h"

#include "foundation/messages/FMessenger.h"
#include "foundation/messages/FTaskList.h"
#include "foundation/messages/UpdateHandler.h"

namespace tessera {
namespace {

void tellDeferredChanges() {
    // There is none any more once the singletons have gone down.
    if (UpdateHandler* handler = UpdateHandler::getInstance(true)) {
        handler->triggerDeferred(nullptr);
    }
}

} // namespace

// The handler stands from here on: dependents that were added while there is none would be forgotten.
FIdleTimer::FIdleTimer() : timer_(kPeriodMs, [this] { tick(); }) {
    UpdateHandler::getInstance(true);
}

void FIdleTimer::tick() {
    if (!paused_) {
        runIdleTask();
    }
}

void FIdleTimer::runIdleTask() {
    tellDeferredChanges();
    if (FMessenger* messenger = FMessenger::getInstance()) {
        messenger->deliverMessages();
    }
    // Once more, so that what the targets of messages have changed is told in the same turn.
    tellDeferredChanges();
    FTaskList::process().runTasks();
}

} // namespace tessera
