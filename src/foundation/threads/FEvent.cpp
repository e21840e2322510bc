#include "foundation/threads/FEvent.h"

namespace tessera {

FEvent::FEvent(const char* name) : event_(platform::NamedEvent::open(name, platform::NamedEvent::Reset::bySystem)) {}

bool FEvent::wait(std::uint32_t timeoutMs) {
    return event_.wait(timeoutMs) != platform::NamedEvent::WaitResult::timedOut;
}

} // namespace tessera
