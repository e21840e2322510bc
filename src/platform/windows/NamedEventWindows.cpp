#include "platform/NamedEvent.h"

#include <windows.h>

namespace tessera::platform {

NamedEvent NamedEvent::open(const char* name, Reset reset) {
    NamedEvent event;
    const char* shared = name != nullptr && *name != '\0' ? name : nullptr;
    const BOOL manual = reset == Reset::byWaiter ? TRUE : FALSE;
    event.event_ = CreateEventA(nullptr, manual, FALSE, shared);
    event.detail_ = static_cast<int>(reset);
    return event;
}

bool NamedEvent::signal() {
    return SetEvent(event_) == TRUE;
}

NamedEvent::WaitResult NamedEvent::wait(std::uint32_t timeoutMs) {
    static_assert(kNoTimeLimit == INFINITE);
    switch (WaitForSingleObject(event_, timeoutMs)) {
    case WAIT_OBJECT_0:
        break;
    case WAIT_TIMEOUT:
        return WaitResult::timedOut;
    default:
        return WaitResult::failed;
    }
    if (detail_ == static_cast<int>(Reset::byWaiter)) {
        ResetEvent(event_);
    }
    return WaitResult::signalled;
}

void NamedEvent::close() {
    if (event_ != nullptr) {
        CloseHandle(std::exchange(event_, nullptr));
    }
    detail_ = kNoDetail;
}

void NamedEvent::abandon() {
    event_ = nullptr;
    detail_ = kNoDetail;
}

} // namespace tessera::platform
