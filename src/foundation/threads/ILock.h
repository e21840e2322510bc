// ILock: what every exclusive lock offers, so that FLockGuard and its users needn't know which one they hold.
#pragma once

namespace tessera {

class ILock {
public:
    virtual ~ILock() = default;
    virtual void lock() = 0;
    virtual void unlock() = 0;
    // True when the lock was free, or this thread's own, and is now held once more.
    virtual bool tryLock() = 0;
};

} // namespace tessera
