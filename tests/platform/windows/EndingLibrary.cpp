// A library that tells where it is, and that has a thread and a watch at work when its process ends. Its own exit
// handlers run when the system has stopped all threads but one: what waits for one of them there must not wait for
// good.
#include "platform/Identity.h"
#include "platform/ProcessEnd.h"
#include "platform/ProcessEndWatch.h"
#include "platform/Processes.h"
#include "platform/Semaphore.h"
#include "platform/SmallFile.h"
#include "platform/Threads.h"

#include <string>

namespace {

using namespace tessera::platform;

constexpr std::uint32_t kLong = 20'000;

class AtWork {
public:
    AtWork() = default;
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;
    ~AtWork() {
        if (report_.empty()) {
            return;
        }
        std::string told = otherThreadsAreGone() ? "others gone" : "others at work";
        told += thread_.wait(kNoTimeLimit) ? ", joined" : ", not joined";
        watch_.stop();
        writeSmallFile(report_, told + ", stopped");
    }

    // True once all of it is at work.
    bool begin(const char* report, const char* program) {
        report_ = report;
        thread_ = ThreadHandle::createSuspended(
            [](void*) -> std::uint32_t {
                sleepFor(kNoTimeLimit);
                return 0;
            },
            nullptr);
        child_ = Process::start(program, {"exit"});
        return thread_.resume() && watch_.start(child_.id(), [this] {
            told_.release(1);
            sleepFor(kNoTimeLimit);
        }) && told_.wait(kLong);
    }

private:
    std::string report_;
    ThreadHandle thread_;
    Process child_;
    Semaphore told_{0};
    ProcessEndWatch watch_;
};

AtWork atWork;

} // namespace

extern "C" __declspec(dllexport) void* ownHandle() {
    return moduleHandle();
}

extern "C" __declspec(dllexport) const char16_t* ownPath() {
    static const std::u16string path = modulePath();
    return path.c_str();
}

extern "C" __declspec(dllexport) bool beginWork(const char* report, const char* program) {
    return atWork.begin(report, program);
}
