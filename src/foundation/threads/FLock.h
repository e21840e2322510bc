// FLock: the framework's lock for short sections. Recursive: the thread that holds it may take it again, and the other
// threads get it after as many unlocks. Any thread; nothing fails. An unlock by a thread that doesn't hold it does
// nothing.
#pragma once

#include "foundation/threads/ILock.h"
#include "platform/RecursiveLock.h"

namespace tessera {

class FLock final : public ILock {
public:
    // The name is for readers of the code; nothing keeps it.
    explicit FLock([[maybe_unused]] const char* name = "FLock") {}
    FLock(const FLock&) = delete;
    FLock& operator=(const FLock&) = delete;

    void lock() override { lock_.lock(); }
    void unlock() override { lock_.unlock(); }
    bool tryLock() override { return lock_.tryLock(); }

private:
    platform::RecursiveLock lock_;
};

} // namespace tessera
