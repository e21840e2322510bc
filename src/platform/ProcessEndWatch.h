// ProcessEndWatch: one callback when a process ends.
//
// The callback runs once, on a thread of the platform that it must not hold up, and at once if the process has ended
// already but can still be reached. It must not stop or destroy its own watch. start and stop belong to the owner, one
// thread at a time.
#pragma once

#include <cstdint>
#include <functional>

namespace tessera::platform {

class ProcessEndWatch {
public:
    ProcessEndWatch() = default;
    ProcessEndWatch(const ProcessEndWatch&) = delete;
    ProcessEndWatch& operator=(const ProcessEndWatch&) = delete;
    ~ProcessEndWatch();

    // Stops what it watched before. False when there is no such process, or it can't be watched; nothing is called
    // then.
    bool start(int processId, std::function<void()> ended);
    // After it has returned the callback isn't running and won't be called.
    void stop();

private:
    // Linux: the key with the watching thread. Windows: where the registered wait is kept. 0 while idle.
    std::uint64_t watch_ = 0;
};

} // namespace tessera::platform
