#include "foundation/threads/FThread.h"

#include "foundation/threads/FThreadLocal.h"
#include "platform/ProcessPriority.h"

#include <atomic>
#include <iterator>

namespace tessera {

namespace {

std::atomic<FThreadObserver*> observer{nullptr};

// By level. What the middle ones mean depends on the class of the process: a raised process keeps its threads lower.
constexpr std::int32_t kValuesInNormalClass[] = {-15, -1, 0, 1, 2, 15};
constexpr std::int32_t kValuesInOtherClass[] = {-15, -2, -1, 0, 1, 15};

} // namespace

void setThreadObserver(FThreadObserver* newObserver) {
    observer.store(newObserver);
}

std::optional<std::int32_t> threadPriorityValue(std::int32_t level, std::uint32_t processClass) {
    // A negative level is a large unsigned one.
    if (static_cast<std::uint32_t>(level) >= std::size(kValuesInNormalClass)) {
        return std::nullopt;
    }
    return processClass == platform::kNormalClass ? kValuesInNormalClass[level] : kValuesInOtherClass[level];
}

FThread::FThread(const char* name) : name_(name) {
    if (FThreadObserver* told = observer.load()) {
        told->threadCreated(this);
    }
}

FThread::~FThread() {
    if (FThreadObserver* told = observer.load()) {
        told->threadDestroyed(this);
    }
}

bool FThread::setPriority(std::int32_t level) {
    priority_ = level;
    if (!handle_) {
        return true;
    }
    const std::optional<std::int32_t> value = threadPriorityValue(level, platform::processClass());
    return value && handle_.setPriority(*value);
}

void FThread::start() {
    started_ = 1;
    handle_ = platform::ThreadHandle::createSuspended(enter, this);
    id_ = handle_.id();
    setPriority(priority_);
    handle_.resume();
}

std::uint32_t FThread::enter(void* thread) {
    const std::uint32_t code = static_cast<FThread*>(thread)->run();
    // The object may be gone from here on.
    releaseThreadLocals();
    return code;
}

void FThread::terminate() {
    handle_.terminate();
    handle_.close();
}

bool FThread::join(std::uint32_t timeoutMs) {
    return started_ == 0 || !handle_ || handle_.wait(timeoutMs);
}

bool FThread::setCpuAffinity(const FCpuAffinity& affinity) {
    constexpr std::int32_t kAnyCpu = -1;
    constexpr std::int32_t kClearIdeal = 64;
    cpu_ = affinity.useCpu != 0 ? affinity.cpu : kAnyCpu;
    if (!handle_) {
        return false;
    }
    const std::uint64_t processMask = platform::processAffinityMask();
    if (affinity.idealOnly != 0) {
        // The index isn't used for the hard mask here; the topmost processor alone is tried.
        constexpr std::uint64_t kTopmost = 0x8000000000000000u;
        const std::uint64_t mask = cpu_ >= 0 ? kTopmost : cpu_ == kAnyCpu ? processMask : 0;
        if ((mask & processMask) != 0) {
            handle_.setAffinity(mask);
        }
        return handle_.setIdealProcessor(cpu_) != -1;
    }
    handle_.setIdealProcessor(kClearIdeal);
    const std::uint64_t mask = cpu_ >= 0 ? std::uint64_t{1} << (cpu_ & 63) : cpu_ == kAnyCpu ? processMask : 0;
    return mask != 0 && (mask & ~processMask) == 0 && handle_.setAffinity(mask);
}

bool FThread::setIdealProcessor(std::int32_t index) {
    return handle_.setIdealProcessor(index) != -1;
}

bool FThread::isCurrent() const {
    return id_ != 0 && id_ == platform::currentThreadId();
}

void FThread::sleep(std::uint32_t ms) {
    platform::sleepFor(ms);
}

} // namespace tessera
