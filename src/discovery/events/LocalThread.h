// LocalThread: a thread with a name that runs one function. Made stopped; start() returns once it runs. The owner
// calls, one thread at a time. A running thread doesn't need the object any more: it may go without join.
#pragma once

#include "platform/Threads.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace tessera {

class LocalSemaphore;

class LocalThread {
public:
    LocalThread(std::string name, std::function<void()> function);
    LocalThread(const LocalThread&) = delete;
    LocalThread& operator=(const LocalThread&) = delete;
    // A thread that was never started ends without having run.
    ~LocalThread();

    // False when it was started before or couldn't be made.
    bool start();
    // Waits without limit; true when the thread has ended, false when it never began.
    bool join();
    // 0, 1, 2: below normal, normal, above. False for another number and where the system refuses.
    bool setPriority(std::int32_t priority);
    // Only a processor that this process may use; false otherwise.
    bool setAffinity(std::int32_t processor);

private:
    // What the thread runs on. The thread takes the function out of it before start() returns.
    struct Work {
        std::string name;
        std::function<void()> function;
        LocalSemaphore* started = nullptr;
    };
    static std::uint32_t enter(void* work);

    std::unique_ptr<Work> work_;
    platform::ThreadHandle thread_;
    bool started_ = false;
};

} // namespace tessera
