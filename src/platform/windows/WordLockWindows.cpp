#include "platform/WordLock.h"

#include "platform/windows/LateEntry.h"

#include <windows.h>

namespace tessera::platform {

namespace {

static_assert(sizeof(SRWLOCK) == sizeof(WordLock));

using LockCall = void(WINAPI*)(SRWLOCK*);
using TryCall = BOOLEAN(WINAPI*)(SRWLOCK*);

SRWLOCK* lockIn(WordLock& lock) {
    return reinterpret_cast<SRWLOCK*>(&lock);
}

LockCall lockCall(const char* name) {
    return lateEntry<LockCall>(L"Kernel32", name);
}

TryCall tryCall(const char* name) {
    return lateEntry<TryCall>(L"Kernel32", name);
}

// Looked up once, all together, when the first of them is asked for.
struct SystemCalls {
    LockCall initialize = lockCall("InitializeSRWLock");
    LockCall acquireShared = lockCall("AcquireSRWLockShared");
    LockCall releaseShared = lockCall("ReleaseSRWLockShared");
    LockCall acquireExclusive = lockCall("AcquireSRWLockExclusive");
    LockCall releaseExclusive = lockCall("ReleaseSRWLockExclusive");
    TryCall tryAcquireExclusive = tryCall("TryAcquireSRWLockExclusive");
    TryCall tryAcquireShared = tryCall("TryAcquireSRWLockShared");
};

const SystemCalls& systemCalls() {
    static const SystemCalls calls;
    return calls;
}

template <LockCall SystemCalls::*call>
void (*entryFor())(WordLock&) {
    if (systemCalls().*call == nullptr) {
        return nullptr;
    }
    return [](WordLock& lock) { (systemCalls().*call)(lockIn(lock)); };
}

template <TryCall SystemCalls::*call>
bool (*tryEntryFor())(WordLock&) {
    if (systemCalls().*call == nullptr) {
        return nullptr;
    }
    return [](WordLock& lock) { return (systemCalls().*call)(lockIn(lock)) != FALSE; };
}

} // namespace

const WordLockEntries& wordLockEntries() {
    static const WordLockEntries entries{
        entryFor<&SystemCalls::initialize>(),          entryFor<&SystemCalls::acquireShared>(),
        entryFor<&SystemCalls::releaseShared>(),       entryFor<&SystemCalls::acquireExclusive>(),
        entryFor<&SystemCalls::releaseExclusive>(),    tryEntryFor<&SystemCalls::tryAcquireExclusive>(),
        tryEntryFor<&SystemCalls::tryAcquireShared>(),
    };
    return entries;
}

} // namespace tessera::platform
