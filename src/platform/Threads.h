// Threads as the system has them: made stopped, resumed once, waited for, placed and given a priority.
#pragma once

#include "platform/TimeLimit.h"

#include <cstdint>
#include <utility>

namespace tessera::platform {

// One thread of this process. Move-only; letting it go doesn't touch the running thread. A thread that was never
// resumed ends without having run. Any thread may ask; an empty handle answers false.
class ThreadHandle {
public:
    using Entry = std::uint32_t (*)(void* argument);

    ThreadHandle() = default;
    ThreadHandle(ThreadHandle&& other) noexcept : control_(std::exchange(other.control_, nullptr)) {}
    ThreadHandle& operator=(ThreadHandle&& other) noexcept;
    ~ThreadHandle() { close(); }

    // Empty when the system can't make one. The thread exists, with its number, and waits for resume(). It takes no
    // signal of the process: those are for the threads of the program.
    static ThreadHandle createSuspended(Entry entry, void* argument);

    explicit operator bool() const { return control_ != nullptr; }
    std::uint32_t id() const;

    bool resume();
    // True when the thread has ended.
    bool wait(std::uint32_t timeoutMs) const;
    // Stops the thread at its next instruction for good, without unwinding. What it holds it keeps.
    bool terminate();
    void close();

    // A value of -15, -2, -1, 0, 1, 2 or 15, relative to the process's class. False where the system refuses.
    bool setPriority(std::int32_t value);
    // One bit per processor. False when a bit lies outside the process's mask.
    bool setAffinity(std::uint64_t mask);
    // The preferred processor: 0 to 63 sets it and gives the previous one, 64 only gives it, all else gives -1.
    std::int32_t setIdealProcessor(std::int32_t number);

private:
    struct Control;
    explicit ThreadHandle(Control* control) : control_(control) {}

    Control* control_ = nullptr;
};

std::uint32_t currentThreadId();
// For debuggers; the system may cut it (Linux after 15 bytes).
void setCurrentThreadName(const char* name);
// 0 gives up the rest of the time slice.
void sleepFor(std::uint32_t ms);

// The processors that this process may use, one bit each, the first 64; 0 when they can't be told.
std::uint64_t processAffinityMask();

// The numbers of this process's threads, at most `capacity`: how many, or -1 when they can't be listed.
int listThreads(std::uint32_t* ids, int capacity);
// A means to set properties of any thread of this process: its number on Linux, a handle on Windows. 0 for none.
std::uintptr_t openThread(std::uint32_t id);

} // namespace tessera::platform
