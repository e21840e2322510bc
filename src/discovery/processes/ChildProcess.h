// ChildProcess: starts a program and, for a listener, keeps an eye on it until it ends.
//
// Idle, then running after start or attach, then idle again when the listener has been told of the end, or after
// terminate. Calls belong to the owner, one thread at a time; the monitor's thread only looks after the end of a child
// with a listener. Failures are false results. Paths and arguments are UTF-8, arguments are passed on as they are (on
// Windows in one command line, each in double quotes, with quotes inside left alone).
#pragma once

#include "discovery/processes/ProcessHandle.h"
#include "foundation/threads/FLock.h"
#include "persistence/paths/FNPath.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tessera {

class ChildProcessListener;

class ChildProcess {
public:
    using Arguments = std::vector<std::string>;

    enum Flags : std::uint32_t {
        kEndWithObject = 0,
        // terminate and the destructor leave the child alive.
        kKeepRunning = 1,
    };

    // The listener may be null. It must live until this object has gone.
    ChildProcess(const FNPath& executable, ChildProcessListener* listener, std::uint32_t flags);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    // As terminate. If that leaves nobody to watch, it waits up to a second for the monitor to end.
    ~ChildProcess();

    // False, and nothing is started, while there is a child already, and when the program can't be started. The mode is
    // 0, 1 or 2, anything else counting as 0; none of them changes what happens.
    bool start(const Arguments& arguments, std::int32_t mode);
    // With a child already there, brings its window to the front: whether it has one. Else as start.
    bool startOrShow(const Arguments& arguments);
    // Takes a running program of the same file name for the child; it isn't watched. True when there is a child.
    bool attach();
    bool isRunning() const;
    // Ends the child, unless it is to keep running, and lets it go. The listener isn't told.
    void terminate();

    // Of the child that was started or found; -1 without one.
    int processId() const;

private:
    friend class WatchedChildren;

    bool hasProcess() const;
    bool launch(const Arguments& arguments);
    // Whether there was a child and it has ended; then it is dropped.
    bool dropIfEnded();
    void tellEnd();

    std::uint32_t flags_;
    FNPath executable_;
    ChildProcessListener* listener_;
    // Guards process_ alone, which the monitor's thread drops when the child has ended.
    mutable FLock lock_{"FLock"};
    std::unique_ptr<ProcessHandle> process_;
};

} // namespace tessera
