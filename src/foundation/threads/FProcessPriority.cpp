#include "foundation/threads/FProcessPriority.h"

#include "platform/ProcessPriority.h"

namespace tessera {

bool setProcessHighPriority(bool on) {
    return platform::setProcessClass(on ? platform::kHighClass : platform::kNormalClass);
}

bool setProcessAboveNormal(bool on) {
    // Not symmetric: "off" sinks below what the process had before "on".
    return platform::setProcessClass(on ? platform::kAboveNormalClass : platform::kBelowNormalClass);
}

bool setPriorityBoost(bool on) {
    return platform::disablePriorityBoost(!on);
}

} // namespace tessera
