#include "discovery/events/WinIPCSemaphore.h"

#include "foundation/object/FMetaClass.h"

namespace tessera {

using platform::NamedEvent;

const char* WinIPCSemaphore::getClassName() const {
    return metaClass.getName();
}

bool WinIPCSemaphore::isTypeOf(const char* className, bool askBase) const {
    return metaClass.isTypeOf(className, askBase);
}

FResult WinIPCSemaphore::create(const char* name) {
    event_.abandon();
    event_ = NamedEvent::open(name, NamedEvent::Reset::byWaiter);
    return event_.isOpen() ? kResultOk : kResultFalse;
}

bool WinIPCSemaphore::signal() {
    return event_.signal();
}

bool WinIPCSemaphore::wait() {
    return event_.wait(platform::kNoTimeLimit) == NamedEvent::WaitResult::signalled;
}

} // namespace tessera
