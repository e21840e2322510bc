#include "platform/SlowReadWriteLock.h"

#include "platform/windows/WindowsHandle.h"

#include <new>
#include <windows.h>

namespace tessera::platform {

struct SlowReadWriteLock::State {
    WindowsHandle mutex{CreateMutexW(nullptr, FALSE, nullptr)};
    WindowsHandle noReaders{CreateEventW(nullptr, TRUE, TRUE, nullptr)};
    WindowsHandle readers{CreateSemaphoreW(nullptr, 0, 0x7fffffff, nullptr)};

    // Both at once, or neither: whoever waits for the second holds nobody up by the first.
    void waitForMutexAnd(const WindowsHandle& other) const {
        const HANDLE both[] = {mutex.get(), other.get()};
        WaitForMultipleObjects(2, both, TRUE, INFINITE);
    }
    void waitForMutex() const { WaitForSingleObject(mutex.get(), INFINITE); }
    // How many readers there were.
    LONG addReader() const {
        LONG previous = 0;
        ReleaseSemaphore(readers.get(), 1, &previous);
        return previous;
    }
};

SlowReadWriteLock::SlowReadWriteLock() : state_(new (std::nothrow) State) {}

SlowReadWriteLock::~SlowReadWriteLock() = default;

bool SlowReadWriteLock::isValid() const {
    return state_ != nullptr && state_->mutex && state_->noReaders && state_->readers;
}

void SlowReadWriteLock::lockRead() {
    state_->waitForMutex();
    if (state_->addReader() == 0) {
        ResetEvent(state_->noReaders.get());
    }
    ReleaseMutex(state_->mutex.get());
}

void SlowReadWriteLock::unlockRead() {
    state_->waitForMutexAnd(state_->readers);
    // A semaphore tells its count only when it is released: one is added to read it, and taken back.
    const LONG left = state_->addReader();
    WaitForSingleObject(state_->readers.get(), INFINITE);
    if (left == 0) {
        SetEvent(state_->noReaders.get());
    }
    ReleaseMutex(state_->mutex.get());
}

void SlowReadWriteLock::lockWrite() {
    // The mutex stays with the writer.
    state_->waitForMutexAnd(state_->noReaders);
}

void SlowReadWriteLock::unlockWrite() {
    ReleaseMutex(state_->mutex.get());
}

} // namespace tessera::platform
