#include "discovery/events/LocalThread.h"

#include "discovery/events/LocalSemaphore.h"

#include <iterator>
#include <utility>

namespace tessera {

LocalThread::LocalThread(std::string name, std::function<void()> function)
    : work_(new Work{std::move(name), std::move(function)}),
      thread_(platform::ThreadHandle::createSuspended(enter, work_.get())) {}

LocalThread::~LocalThread() = default;

bool LocalThread::start() {
    if (started_) {
        return false;
    }
    LocalSemaphore running(0);
    work_->started = &running;
    started_ = thread_.resume();
    return started_ && running.wait(LocalSemaphore::kForever);
}

std::uint32_t LocalThread::enter(void* work) {
    auto* shared = static_cast<Work*>(work);
    platform::setCurrentThreadName(shared->name.c_str());
    const std::function<void()> function = std::move(shared->function);
    shared->started->release(1);
    // The object may be gone from here on.
    function();
    return 0;
}

bool LocalThread::join() {
    return started_ && thread_.wait(platform::kNoTimeLimit);
}

bool LocalThread::setPriority(std::int32_t priority) {
    constexpr std::int32_t kValues[] = {-1, 0, 1};
    return priority >= 0 && priority < static_cast<std::int32_t>(std::size(kValues)) &&
           thread_.setPriority(kValues[priority]);
}

bool LocalThread::setAffinity(std::int32_t processor) {
    if (processor < 0 || processor >= 64) {
        return false;
    }
    const std::uint64_t mask = std::uint64_t{1} << processor;
    return (platform::processAffinityMask() & mask) != 0 && thread_.setAffinity(mask);
}

} // namespace tessera
