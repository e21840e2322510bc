// ProcessHandle: one running program, as the child-process classes hold it. Letting it go leaves the program alone.
#pragma once

#include "platform/Processes.h"

namespace tessera {

class ProcessHandle {
public:
    explicit ProcessHandle(platform::Process process) : process_(std::move(process)) {}
    ProcessHandle(const ProcessHandle&) = delete;
    ProcessHandle& operator=(const ProcessHandle&) = delete;
    virtual ~ProcessHandle() = default;

    // Ends it at once; from then on it counts as ended.
    virtual void kill() { process_.kill(); }
    // Hides and shows its first window, which brings it to the front. False where there is none.
    virtual bool showWindow() { return process_.showWindow(); }
    virtual bool isRunning() const { return process_.isRunning(); }

    int processId() const { return process_.id(); }

private:
    platform::Process process_;
};

} // namespace tessera
