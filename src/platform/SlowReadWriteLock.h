// SlowReadWriteLock: many readers or one writer, made of a mutex that the writer keeps, an event "no readers" and a
// semaphore that counts readers. A reader holds the mutex only while it enters and leaves. The mutex knows its owner:
// a writer may read and write again. Any thread; waits have no limit.
#pragma once

#include <memory>

namespace tessera::platform {

class SlowReadWriteLock {
public:
    SlowReadWriteLock();
    SlowReadWriteLock(const SlowReadWriteLock&) = delete;
    SlowReadWriteLock& operator=(const SlowReadWriteLock&) = delete;
    ~SlowReadWriteLock();

    // False when the system couldn't make it.
    bool isValid() const;

    void lockRead();
    // Without a reader this waits for one to come.
    void unlockRead();
    void lockWrite();
    // By another thread than the writer: nothing happens.
    void unlockWrite();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace tessera::platform
