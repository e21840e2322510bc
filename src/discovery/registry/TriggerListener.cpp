#include "discovery/registry/TriggerListener.h"

#include "foundation/object/ClassFactory.h"

#include <utility>

namespace tessera {

namespace {

constexpr FUIDBytes kEventClass = "{20D444BC-9924-4483-A7B6-35199221D1AC}"_uid;
// How long a stop waits before it signals once more.
constexpr std::uint32_t kSignalAgainMs = 20;

} // namespace

FRefPtr<IIPCSemaphore> createServiceEvent(const std::string& name) {
    const ClassFactory* registry = ClassFactory::getInstance(false);
    if (registry == nullptr) {
        return nullptr;
    }
    auto event = FRefPtr<IIPCSemaphore>::adopt(static_cast<IIPCSemaphore*>(registry->createInstance(kEventClass)));
    if (event && event->create(name.c_str()) != kResultOk) {
        event.reset();
    }
    return event;
}

TriggerListener::TriggerListener() : FThread("com.marlgrove.remote.triggerlistener") {}

TriggerListener::~TriggerListener() {
    stopListening();
}

bool TriggerListener::listen(const std::string& name, Callback callback) {
    if (running_) {
        return false;
    }
    event_ = createServiceEvent(name);
    if (!event_) {
        return false;
    }
    name_ = name;
    callback_ = std::move(callback);
    running_ = true;
    start();
    if (!getHandle()) {
        running_ = false;
        event_.reset();
        return false;
    }
    return true;
}

bool TriggerListener::stopListening() {
    if (!event_) {
        return false;
    }
    running_ = false;
    skipNext_ = true;
    // Another process may listen under the same name and take the signal that was meant for us; so again until it
    // arrives.
    do {
        event_->signal();
    } while (!join(kSignalAgainMs));
    event_.reset();
    return true;
}

std::uint32_t TriggerListener::run() {
    while (event_->wait()) {
        if (!running_) {
            return kStoppedWhileWaiting;
        }
        if (callback_ && !skipNext_) {
            callback_(name_);
        }
        skipNext_ = false;
        if (!running_) {
            return kStopped;
        }
    }
    return kWaitFailed;
}

} // namespace tessera
