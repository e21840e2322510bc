#include "platform/NamedEvent.h"

#include <utility>

namespace tessera::platform {

NamedEvent::NamedEvent(NamedEvent&& other) noexcept
    : event_(std::exchange(other.event_, nullptr)), detail_(std::exchange(other.detail_, kNoDetail)) {}

NamedEvent& NamedEvent::operator=(NamedEvent&& other) noexcept {
    if (this != &other) {
        close();
        event_ = std::exchange(other.event_, nullptr);
        detail_ = std::exchange(other.detail_, kNoDetail);
    }
    return *this;
}

} // namespace tessera::platform
