#include "platform/SlowReadWriteLock.h"

#include <condition_variable>
#include <mutex>
#include <new>
#include <thread>

namespace tessera::platform {

// One condition variable stands for mutex, event and semaphore, since a waiter may need two of them at once.
struct SlowReadWriteLock::State {
    std::mutex guard;
    std::condition_variable changed;
    std::thread::id owner; // of the mutex; nobody while depth is 0
    int depth = 0;
    bool noReaders = true;
    int readers = 0;

    bool mutexIsMine() const { return depth != 0 && owner == std::this_thread::get_id(); }
    bool mutexAdmitsMe() const { return depth == 0 || mutexIsMine(); }
};

SlowReadWriteLock::SlowReadWriteLock() : state_(new (std::nothrow) State) {}

SlowReadWriteLock::~SlowReadWriteLock() = default;

bool SlowReadWriteLock::isValid() const {
    return state_ != nullptr;
}

void SlowReadWriteLock::lockRead() {
    std::unique_lock guard(state_->guard);
    state_->changed.wait(guard, [this] { return state_->mutexAdmitsMe(); });
    if (state_->readers++ == 0) {
        state_->noReaders = false;
    }
    state_->changed.notify_all();
}

void SlowReadWriteLock::unlockRead() {
    std::unique_lock guard(state_->guard);
    state_->changed.wait(guard, [this] { return state_->mutexAdmitsMe() && state_->readers > 0; });
    if (--state_->readers == 0) {
        state_->noReaders = true;
    }
    state_->changed.notify_all();
}

void SlowReadWriteLock::lockWrite() {
    std::unique_lock guard(state_->guard);
    state_->changed.wait(guard, [this] { return state_->mutexAdmitsMe() && state_->noReaders; });
    state_->owner = std::this_thread::get_id();
    ++state_->depth;
}

void SlowReadWriteLock::unlockWrite() {
    const std::lock_guard guard(state_->guard);
    if (!state_->mutexIsMine()) {
        return;
    }
    --state_->depth;
    state_->changed.notify_all();
}

} // namespace tessera::platform
