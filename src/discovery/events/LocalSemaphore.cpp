#include "discovery/events/LocalSemaphore.h"

namespace tessera {

void LocalSemaphore::sleep(std::uint32_t ms) {
    static LocalSemaphore never(0);
    never.wait(ms);
}

} // namespace tessera
