// FThread: a thread with a priority and a place to run. Derive from it and put the body into run().
//
// Created, started once, runs until run() returns. The object belongs to its owner and may be deleted at any time: its
// destructor doesn't wait. An owner whose run() uses the object therefore stops it by a flag of its own, and joins,
// before it deletes. A body may delete its own object as its last act: nothing touches the object after run().
//
// start, terminate and the setters belong to the owner, one thread at a time; join and isCurrent to any thread.
// Failures are false results. A thread that can't be created isn't reported: the object has no handle, and join gives
// true at once.
#pragma once

#include "foundation/text/FString.h"
#include "foundation/threads/FCpuAffinity.h"
#include "foundation/threads/FThreadObserver.h"
#include "platform/Threads.h"
#include "platform/TimeLimit.h"

#include <cstdint>
#include <optional>

namespace tessera {

class FThread {
public:
    // Levels of priority, 0 to 5, are indices into the table for the process's class. This one is normal in a normal
    // process.
    static constexpr std::int32_t kNormalLevel = 2;

    explicit FThread(const char* name);
    FThread(const FThread&) = delete;
    FThread& operator=(const FThread&) = delete;
    virtual ~FThread();

    // The level is kept in any case, and takes effect at the start if there is no thread yet (then true). False for a
    // level above 5, a negative one included, and where the system refuses.
    virtual bool setPriority(std::int32_t level);
    // For subclasses: the owner wants run() to come to its end.
    virtual void stopRequested() {}
    // The body, on the new thread. Its result is the thread's exit code.
    virtual std::uint32_t run() { return 0; }

    // The priority is in effect before run() begins. An object is started once.
    void start();
    // Stops the thread wherever it is, for good: it keeps the locks and memory that it holds, so the process is to end
    // soon after. The object then has no handle.
    void terminate();
    // True when the thread has ended, was never started, or was terminated; false when the time is over.
    bool join(std::uint32_t timeoutMs);
    bool join() { return join(platform::kNoTimeLimit); }

    // False without a running thread (the processor is kept, but takes no effect later) and where the processor isn't
    // among the process's own. With `idealOnly` the hard mask is left to bit 63 alone.
    bool setCpuAffinity(const FCpuAffinity& affinity);
    // A preference: index below 64. False without a handle or beyond that.
    bool setIdealProcessor(std::int32_t index);

    bool isStarted() const { return started_ != 0; }
    bool isCurrent() const;
    // Stays this object's. Empty when not started, terminated, or when the thread couldn't be created.
    const platform::ThreadHandle& getHandle() const { return handle_; }
    const FString& getName() const { return name_; }

    // 0 gives up the rest of the time slice.
    static void sleep(std::uint32_t ms);

private:
    static std::uint32_t enter(void* thread);

    std::int32_t priority_ = kNormalLevel;
    std::int32_t cpu_ = -1;
    std::uint8_t started_ = 0;
    platform::ThreadHandle handle_;
    std::uint32_t id_ = 0;
    FString name_;
};

// The value that the platform is given for a level, in a process of the given class; nothing for a level above 5.
// Apart from the class, for the tests: only a privileged process can try them all on threads.
std::optional<std::int32_t> threadPriorityValue(std::int32_t level, std::uint32_t processClass);

} // namespace tessera
