// SleepingThread: a thread that does nothing until it goes out of scope, for looking at from outside.
#pragma once

#include "platform/Semaphore.h"
#include "platform/Threads.h"

#include <cstdint>

namespace tessera::platform {

class SleepingThread {
public:
    SleepingThread()
        : handle(ThreadHandle::createSuspended(
              [](void* self) -> std::uint32_t {
                  static_cast<SleepingThread*>(self)->end_.wait(kNoTimeLimit);
                  return 0;
              },
              this)) {
        handle.resume();
    }
    ~SleepingThread() {
        end_.release(1);
        handle.wait(kNoTimeLimit);
    }

    ThreadHandle handle;

private:
    Semaphore end_{0};
};

} // namespace tessera::platform
