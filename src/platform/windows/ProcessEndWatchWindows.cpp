#include "platform/ProcessEndWatch.h"

#include "platform/ProcessEnd.h"

#include <windows.h>

#include <memory>
#include <utility>

namespace tessera::platform {

namespace {

constexpr DWORD kAllRights = 0x1fffff;
constexpr ULONG kOnce = 8;
static_assert(kOnce == WT_EXECUTEONLYONCE);

struct RegisteredWait {
    HANDLE process = nullptr;
    HANDLE wait = nullptr;
    std::function<void()> ended;
};

// A thread of the system's pool.
void CALLBACK processEnded(void* context, BOOLEAN) {
    static_cast<RegisteredWait*>(context)->ended();
}

} // namespace

ProcessEndWatch::~ProcessEndWatch() {
    stop();
}

bool ProcessEndWatch::start(int processId, std::function<void()> ended) {
    stop();
    auto watch = std::make_unique<RegisteredWait>();
    watch->process = OpenProcess(kAllRights, FALSE, static_cast<DWORD>(processId));
    if (watch->process == nullptr) {
        return false;
    }
    watch->ended = std::move(ended);
    if (RegisterWaitForSingleObject(&watch->wait, watch->process, processEnded, watch.get(), INFINITE, kOnce) == 0) {
        CloseHandle(watch->process);
        return false;
    }
    watch_ = reinterpret_cast<std::uint64_t>(watch.release());
    return true;
}

void ProcessEndWatch::stop() {
    if (watch_ == 0) {
        return;
    }
    const std::unique_ptr<RegisteredWait> watch(reinterpret_cast<RegisteredWait*>(std::exchange(watch_, 0)));
    if (otherThreadsAreGone()) {
        // A callback that was running when they were stopped will never be over.
        return;
    }
    // This value has the system wait until a callback that runs is over.
    UnregisterWaitEx(watch->wait, INVALID_HANDLE_VALUE);
    CloseHandle(watch->process);
}

} // namespace tessera::platform
