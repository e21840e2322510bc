#include "foundation/threads/FLock.h"

namespace tessera {

FLock::FLock(const char*) {}

void FLock::lock() {
    lock_.lock();
}

void FLock::unlock() {
    lock_.unlock();
}

bool FLock::tryLock() {
    return lock_.tryLock();
}

} // namespace tessera
