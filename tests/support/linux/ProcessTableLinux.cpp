#include "support/ProcessTable.h"

#include <cerrno>
#include <csignal>

namespace tessera::testing_support {

void killByNumber(int processId) {
    ::kill(processId, SIGKILL);
}

bool hasVanished(int processId) {
    return ::kill(processId, 0) == -1 && errno == ESRCH;
}

bool isForgotten(int processId) {
    return hasVanished(processId);
}

} // namespace tessera::testing_support
