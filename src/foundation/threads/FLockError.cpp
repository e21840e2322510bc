#include "foundation/threads/FLockError.h"

#include "platform/ProcessPriority.h"

#include <atomic>

namespace tessera {

namespace {

void abortProcess(int) {
    platform::abortQuietly();
}

std::atomic<FLockErrorHandler> handler{abortProcess};

} // namespace

void setLockErrorHandler(FLockErrorHandler newHandler) {
    handler.store(newHandler != nullptr ? newHandler : abortProcess);
}

void reportLockError(int code) {
    handler.load()(code);
}

} // namespace tessera
