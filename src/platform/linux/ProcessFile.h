// Process descriptors: a file that stands for one process, becomes readable at its end, and never for a later process
// that got the same number.
#pragma once

#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

namespace tessera::platform {

// -1 when there is no such process. Closed in programs that this one starts.
inline int openProcessFile(int processId) {
    return processId > 0 ? static_cast<int>(syscall(SYS_pidfd_open, static_cast<pid_t>(processId), 0)) : -1;
}

inline bool sendSignal(int processFile, int signal) {
    return syscall(SYS_pidfd_send_signal, processFile, signal, nullptr, 0) == 0;
}

} // namespace tessera::platform
