// FLockGuard: holds a lock for the length of a scope.
#pragma once

#include "foundation/threads/ILock.h"

namespace tessera {

template <class Lock = ILock>
class [[nodiscard]] FLockGuard {
public:
    explicit FLockGuard(Lock& lock) : lock_(lock) { lock_.lock(); }
    ~FLockGuard() { lock_.unlock(); }
    FLockGuard(const FLockGuard&) = delete;
    FLockGuard& operator=(const FLockGuard&) = delete;

private:
    Lock& lock_;
};

} // namespace tessera
