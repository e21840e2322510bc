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

} // namespace tessera::testing_support
