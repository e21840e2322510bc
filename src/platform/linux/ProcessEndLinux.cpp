#include "platform/ProcessEnd.h"

namespace tessera::platform {

// They run until the last exit handler has returned.
bool otherThreadsAreGone() {
    return false;
}

} // namespace tessera::platform
