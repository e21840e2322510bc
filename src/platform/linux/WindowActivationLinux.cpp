#include "platform/WindowActivation.h"

namespace tessera::platform {

void raiseWindow(const char16_t*) {
    // A desktop lets a program raise its own windows alone; the message that follows is what counts.
}

} // namespace tessera::platform
