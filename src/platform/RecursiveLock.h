// RecursiveLock: the system's own lock that its owner may take again. Any thread; nothing fails. An unlock by a thread
// that doesn't hold it does nothing.
#pragma once

#include <cstddef>

namespace tessera::platform {

class RecursiveLock {
public:
    RecursiveLock();
    RecursiveLock(const RecursiveLock&) = delete;
    RecursiveLock& operator=(const RecursiveLock&) = delete;
    ~RecursiveLock();

    void lock();
    void unlock();
    bool tryLock();

private:
    // Room for the system's lock, so that its header stays out of this one: 40 bytes on both systems.
    alignas(8) std::byte storage_[40];
};

} // namespace tessera::platform
