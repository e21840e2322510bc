// FEvent: waits on a named event of this user's processes. Each signal lets one wait through, and a signal with nobody
// waiting lets the next one through. The other side is whatever signals the same name.
#pragma once

#include "platform/NamedEvent.h"

#include <cstdint>

namespace tessera {

class FEvent {
public:
    // Null or an empty name makes an event of its own that nobody else can reach.
    explicit FEvent(const char* name);

    // False only when the time is over: a wait that fails, on an event that couldn't be made, counts as a signal.
    bool wait(std::uint32_t timeoutMs);

private:
    platform::NamedEvent event_;
};

} // namespace tessera
