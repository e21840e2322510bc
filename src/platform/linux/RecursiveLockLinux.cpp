#include "platform/RecursiveLock.h"

#include <new>
#include <pthread.h>

namespace tessera::platform {

namespace {

pthread_mutex_t* mutexIn(std::byte* storage) {
    return std::launder(reinterpret_cast<pthread_mutex_t*>(storage));
}

} // namespace

RecursiveLock::RecursiveLock() {
    static_assert(sizeof(pthread_mutex_t) <= sizeof storage_ && alignof(pthread_mutex_t) <= 8);
    auto* mutex = new (storage_) pthread_mutex_t;
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

RecursiveLock::~RecursiveLock() {
    pthread_mutex_destroy(mutexIn(storage_));
}

void RecursiveLock::lock() {
    pthread_mutex_lock(mutexIn(storage_));
}

void RecursiveLock::unlock() {
    pthread_mutex_unlock(mutexIn(storage_));
}

bool RecursiveLock::tryLock() {
    return pthread_mutex_trylock(mutexIn(storage_)) == 0;
}

} // namespace tessera::platform
