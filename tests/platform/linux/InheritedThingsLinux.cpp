#include "platform/InheritedThings.h"

#include <csignal>
#include <fcntl.h>
#include <ostream>
#include <string>

namespace tessera::platform {

void reportInheritedThings(std::ostream& out) {
    std::string files;
    for (int file = 3; file < 1024; ++file) {
        if (fcntl(file, F_GETFD) != -1) {
            files += " " + std::to_string(file);
        }
    }
    sigset_t mask;
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    struct sigaction pipe {};
    sigaction(SIGPIPE, nullptr, &pipe);
    out << "files=" << files << "\n";
    out << "blocked=" << (sigismember(&mask, SIGTERM) == 1 || sigismember(&mask, SIGUSR1) == 1) << "\n";
    out << "pipe ignored=" << (pipe.sa_handler == SIG_IGN) << "\n";
}

} // namespace tessera::platform
