#include "platform/RecursiveLock.h"

#include <new>
#include <windows.h>

namespace tessera::platform {

namespace {

CRITICAL_SECTION* sectionIn(std::byte* storage) {
    return std::launder(reinterpret_cast<CRITICAL_SECTION*>(storage));
}

} // namespace

RecursiveLock::RecursiveLock() {
    static_assert(sizeof(CRITICAL_SECTION) == sizeof storage_ && alignof(CRITICAL_SECTION) <= 8);
    InitializeCriticalSection(new (storage_) CRITICAL_SECTION);
}

RecursiveLock::~RecursiveLock() {
    DeleteCriticalSection(sectionIn(storage_));
}

void RecursiveLock::lock() {
    EnterCriticalSection(sectionIn(storage_));
}

void RecursiveLock::unlock() {
    CRITICAL_SECTION* section = sectionIn(storage_);
    // The system would count down for anybody, and block the lock for good.
    if (section->OwningThread == ULongToHandle(GetCurrentThreadId())) {
        LeaveCriticalSection(section);
    }
}

bool RecursiveLock::tryLock() {
    return TryEnterCriticalSection(sectionIn(storage_)) != FALSE;
}

} // namespace tessera::platform
