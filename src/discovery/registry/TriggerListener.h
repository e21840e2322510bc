// TriggerListener: the thread that sleeps on a service's named event and tells of each wake-up.
//
// listen and stopListening belong to the owner, one thread at a time. The callback runs on the listener's own thread;
// it must not wait for the owner's, which may be waiting for the listener to end.
#pragma once

#include "discovery/events/IIPCSemaphore.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/threads/FThread.h"

#include <atomic>
#include <functional>
#include <string>

namespace tessera {

class TriggerListener : public FThread {
public:
    using Callback = std::function<void(const std::string& name)>;

    // What run gives.
    static constexpr std::uint32_t kStopped = 0;
    static constexpr std::uint32_t kWaitFailed = 1;
    static constexpr std::uint32_t kStoppedWhileWaiting = 2;

    TriggerListener();
    // Stops.
    ~TriggerListener() override;

    // Once in the object's life. False when it is listening already or there can be no event of that name.
    bool listen(const std::string& name, Callback callback);
    // Returns when the thread has ended. False when it wasn't listening.
    bool stopListening();

    std::uint32_t run() override;

private:
    FRefPtr<IIPCSemaphore> event_;
    Callback callback_;
    std::string name_;
    std::atomic<bool> running_ = false;
    std::atomic<bool> skipNext_ = false;
};

// A new event object of that name, by way of the class registry; null when there can be none.
FRefPtr<IIPCSemaphore> createServiceEvent(const std::string& name);

} // namespace tessera
