// The other side of a round trip: waits for the first name and signals the second, until it is killed. Arguments:
// "ours" or "sem", the two names.
#include "platform/NamedEvent.h"

#include <fcntl.h>
#include <semaphore.h>
#include <string_view>

using tessera::platform::NamedEvent;

int main(int argc, char** argv) {
    if (argc != 4) {
        return 2;
    }
    if (std::string_view(argv[1]) == "ours") {
        NamedEvent in = NamedEvent::open(argv[2], NamedEvent::Reset::byWaiter);
        NamedEvent out = NamedEvent::open(argv[3], NamedEvent::Reset::byWaiter);
        while (in.wait(tessera::platform::kNoTimeLimit) == NamedEvent::WaitResult::signalled) {
            out.signal();
        }
        return 1;
    }
    sem_t* in = sem_open(argv[2], O_CREAT, 0600, 0);
    sem_t* out = sem_open(argv[3], O_CREAT, 0600, 0);
    while (sem_wait(in) == 0) {
        sem_post(out);
    }
    return 1;
}
