#include "platform/Threads.h"

#include "platform/ProcessPriority.h"
#include "platform/linux/Futex.h"
#include "platform/linux/Niceness.h"

#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <mutex>
#include <new>
#include <pthread.h>
#include <sched.h>
#include <sys/resource.h>
#include <time.h>

namespace tessera::platform {

namespace {

enum Gate : std::uint32_t { kClosed, kOpen, kCancelled };

// Near the end of the range, where the fewest look for a free number.
int parkSignal() {
    return SIGRTMAX - 1;
}

void sleepUntilChanged(std::atomic<std::uint32_t>& word, std::uint32_t from) {
    const Deadline forever(kNoTimeLimit);
    while (word.load() == from) {
        futexWait(futexWord(word), from, forever, FutexScope::process);
    }
}

// The number of a thread that exists, or 0. The kernel told it before pthread_create returned, and the clock of the
// thread's processor time is named after it: ~number << 3 and the kind of clock. To wait until the thread itself tells
// would hold the caller, the host's own thread, for as long as the scheduler lets the new one wait.
std::uint32_t numberOf(pthread_t thread) {
    clockid_t clock = 0;
    return pthread_getcpuclockid(thread, &clock) == 0 ? ~static_cast<std::uint32_t>(clock >> 3) : 0;
}

void changeAndWake(std::atomic<std::uint32_t>& word, std::uint32_t to) {
    word.store(to);
    futexWake(futexWord(word), INT_MAX, FutexScope::process);
}

// What a thread of ours doesn't take: everything that is meant for the process as a whole. Faults stay the thread's
// own, and a profiler may look in.
sigset_t maskOfNewThread() {
    sigset_t mask;
    sigfillset(&mask);
    for (const int open : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT, SIGSYS, SIGPROF, parkSignal()}) {
        sigdelset(&mask, open);
    }
    return mask;
}

} // namespace

// Shared by the handle and the thread; the last one deletes it. Threads are detached, as a handle may go at any time,
// and the system would forget the end of a thread that is joined by another one.
struct ThreadHandle::Control {
    std::atomic<int> references{2};
    Entry entry = nullptr;
    void* argument = nullptr;
    pthread_t native{};
    std::atomic<std::uint32_t> id{0};
    std::atomic<std::uint32_t> gate{kClosed};
    std::atomic<std::uint32_t> done{0};
    // While held, with done 0, the thread exists: its number and its pthread_t are its own.
    std::mutex lifeGuard;
    std::atomic<std::int32_t> idealProcessor{0};

    static void* run(void* self);
    static void park(int, siginfo_t* info, void*);
    static bool installPark();

    void finish();
    void release() {
        if (references.fetch_sub(1) == 1) {
            delete this;
        }
    }
    // Runs `act` while the thread is sure to exist; false when it has ended.
    template <class Act>
    bool whileAlive(Act act) {
        const std::lock_guard guard(lifeGuard);
        return done.load() == 0 && act();
    }
};

void* ThreadHandle::Control::run(void* self) {
    auto* control = static_cast<Control*>(self);
    changeAndWake(control->id, currentThreadId());
    sleepUntilChanged(control->gate, kClosed);
    if (control->gate.load() == kOpen) {
        control->entry(control->argument);
    }
    control->finish();
    control->release();
    return nullptr;
}

void ThreadHandle::Control::finish() {
    // From here on a parking signal comes too late; parked in the middle of this, the thread would keep the guard.
    sigset_t late;
    sigemptyset(&late);
    sigaddset(&late, parkSignal());
    pthread_sigmask(SIG_BLOCK, &late, nullptr);
    const std::lock_guard guard(lifeGuard);
    changeAndWake(done, 1);
}

// On the thread that is to stop. It never comes back: unwinding it would run through frames that allow no exception.
void ThreadHandle::Control::park(int, siginfo_t* info, void*) {
    if (info->si_code != SI_QUEUE || info->si_pid != getpid()) {
        return;
    }
    changeAndWake(static_cast<Control*>(info->si_value.sival_ptr)->done, 1);
    sigset_t all;
    sigfillset(&all);
    for (;;) {
        sigsuspend(&all);
    }
}

// False when somebody else uses the signal.
bool ThreadHandle::Control::installPark() {
    struct sigaction present {};
    if (sigaction(parkSignal(), nullptr, &present) != 0) {
        return false;
    }
    if ((present.sa_flags & SA_SIGINFO) != 0) {
        return present.sa_sigaction == park;
    }
    if (present.sa_handler != SIG_DFL) {
        return false;
    }
    struct sigaction ours {};
    ours.sa_sigaction = park;
    ours.sa_flags = SA_SIGINFO;
    sigfillset(&ours.sa_mask);
    return sigaction(parkSignal(), &ours, nullptr) == 0;
}

ThreadHandle ThreadHandle::createSuspended(Entry entry, void* argument) {
    auto control = std::unique_ptr<Control>(new (std::nothrow) Control);
    pthread_attr_t attributes;
    if (control == nullptr || pthread_attr_init(&attributes) != 0) {
        return {};
    }
    control->entry = entry;
    control->argument = argument;
    const sigset_t mask = maskOfNewThread();
    pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
    pthread_attr_setsigmask_np(&attributes, &mask);
    const bool created = pthread_create(&control->native, &attributes, Control::run, control.get()) == 0;
    pthread_attr_destroy(&attributes);
    if (!created) {
        return {};
    }
    if (const std::uint32_t number = numberOf(control->native); number != 0) {
        control->id.store(number);
    } else {
        sleepUntilChanged(control->id, 0);
    }
    return ThreadHandle(control.release());
}

std::uint32_t ThreadHandle::id() const {
    return control_ != nullptr ? control_->id.load() : 0;
}

bool ThreadHandle::resume() {
    if (control_ == nullptr || control_->gate.load() != kClosed) {
        return false;
    }
    changeAndWake(control_->gate, kOpen);
    return true;
}

bool ThreadHandle::wait(std::uint32_t timeoutMs) const {
    if (control_ == nullptr) {
        return false;
    }
    if (control_->done.load() != 0) {
        return true;
    }
    const Deadline deadline(timeoutMs);
    while (control_->done.load() == 0) {
        if (!futexWait(futexWord(control_->done), 0, deadline, FutexScope::process)) {
            return control_->done.load() != 0;
        }
    }
    return true;
}

bool ThreadHandle::terminate() {
    if (control_ == nullptr || !Control::installPark()) {
        return false;
    }
    return control_->whileAlive([this] {
        sigval value;
        value.sival_ptr = control_;
        return pthread_sigqueue(control_->native, parkSignal(), value) == 0;
    });
}

void ThreadHandle::close() {
    Control* control = std::exchange(control_, nullptr);
    if (control == nullptr) {
        return;
    }
    if (control->gate.load() == kClosed) {
        changeAndWake(control->gate, kCancelled);
    }
    control->release();
}

bool ThreadHandle::setPriority(std::int32_t value) {
    const std::optional<int> nice = threadNiceness(processClass(), value);
    return control_ != nullptr && nice &&
           control_->whileAlive([&] { return setpriority(PRIO_PROCESS, control_->id.load(), *nice) == 0; });
}

bool ThreadHandle::setAffinity(std::uint64_t mask) {
    if (control_ == nullptr || mask == 0 || (mask & ~processAffinityMask()) != 0) {
        return false;
    }
    cpu_set_t set;
    CPU_ZERO(&set);
    for (int cpu = 0; cpu < 64; ++cpu) {
        if ((mask >> cpu & 1) != 0) {
            CPU_SET(cpu, &set);
        }
    }
    return control_->whileAlive(
        [&] { return sched_setaffinity(static_cast<pid_t>(control_->id.load()), sizeof set, &set) == 0; });
}

std::int32_t ThreadHandle::setIdealProcessor(std::int32_t number) {
    constexpr std::int32_t kOnlyAsk = 64;
    if (control_ == nullptr || number < 0 || number > kOnlyAsk) {
        return -1;
    }
    // The scheduler takes no such hint; the number is kept for whoever asks.
    return number == kOnlyAsk ? control_->idealProcessor.load() : control_->idealProcessor.exchange(number);
}

std::uint32_t currentThreadId() {
    return static_cast<std::uint32_t>(gettid());
}

void setCurrentThreadName(const char* name) {
    constexpr std::size_t kLongest = 15;
    char cut[kLongest + 1] = {};
    std::strncpy(cut, name, kLongest);
    pthread_setname_np(pthread_self(), cut);
}

void sleepFor(std::uint32_t ms) {
    if (ms == 0) {
        sched_yield();
        return;
    }
    timespec left{static_cast<time_t>(ms / 1000), static_cast<long>(ms % 1000) * 1'000'000};
    do {
        while (nanosleep(&left, &left) != 0 && errno == EINTR) {
        }
    } while (ms == kNoTimeLimit);
}

std::uint64_t processAffinityMask() {
    cpu_set_t set;
    CPU_ZERO(&set);
    if (sched_getaffinity(getpid(), sizeof set, &set) != 0) {
        return 0;
    }
    std::uint64_t mask = 0;
    for (int cpu = 0; cpu < 64; ++cpu) {
        mask |= static_cast<std::uint64_t>(CPU_ISSET(cpu, &set) != 0) << cpu;
    }
    return mask;
}

int listThreads(std::uint32_t* ids, int capacity) {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir("/proc/self/task"), closedir);
    if (folder == nullptr) {
        return -1;
    }
    int count = 0;
    while (count < capacity) {
        const dirent* entry = readdir(folder.get());
        if (entry == nullptr) {
            break;
        }
        const char* end = entry->d_name + std::strlen(entry->d_name);
        if (std::from_chars(entry->d_name, end, ids[count]).ptr == end) {
            ++count;
        }
    }
    return count;
}

std::uintptr_t openThread(std::uint32_t id) {
    return id;
}

} // namespace tessera::platform
