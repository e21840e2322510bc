#include "platform/InterruptRequest.h"

#include <csignal>
#include <initializer_list>

namespace tessera::platform {
namespace {

volatile std::sig_atomic_t requested = 0;

void note(int) {
    requested = 1;
}

} // namespace

void noteInterrupts() {
    struct sigaction action = {};
    action.sa_handler = note;
    // The handling goes back to the default with the first signal, so that the second one ends a program that hangs.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaction(signal, &action, nullptr);
    }
}

bool interruptRequested() {
    return requested != 0;
}

} // namespace tessera::platform
