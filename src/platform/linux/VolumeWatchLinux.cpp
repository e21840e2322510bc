#include "platform/VolumeWatch.h"

namespace tessera::platform {

// Volumes are mounted into the one tree of files here, where folder watches see what comes with them. There are no
// roots that arrive, and nothing sends a message about one.
bool startVolumeWatch(VolumeChangeFunction) {
    return false;
}

void stopVolumeWatch() {}

} // namespace tessera::platform
