#include "platform/linux/ProcessWatcher.h"

#include "platform/Threads.h"

#include <cerrno>
#include <sys/epoll.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace tessera::platform {

ProcessWatcher& ProcessWatcher::instance() {
    // Never destroyed: its thread runs to the end of the process.
    static ProcessWatcher* const watcher = new ProcessWatcher;
    return *watcher;
}

// An epoll queue rather than poll: processes join and leave it while the thread sleeps, without waking it.
ProcessWatcher::ProcessWatcher() : queue_(epoll_create1(EPOLL_CLOEXEC)) {}

ProcessWatcher::Key ProcessWatcher::add(int processFile, std::function<void()> ended) {
    return add({processFile, std::move(ended), false});
}

ProcessWatcher::Key ProcessWatcher::addChild(int processFile) {
    return add({processFile, {}, true});
}

ProcessWatcher::Key ProcessWatcher::add(Entry entry) {
    const std::lock_guard guard(guard_);
    const int file = entry.processFile;
    const Key key = lastKey_ + 1;
    epoll_event event{};
    event.events = EPOLLIN | EPOLLONESHOT;
    event.data.u64 = key;
    // The thread looks the key up under the guard, so it can't come too early.
    if (!startThread() || epoll_ctl(queue_, EPOLL_CTL_ADD, file, &event) != 0) {
        close(file);
        return kNoKey;
    }
    lastKey_ = key;
    entries_.emplace(key, std::move(entry));
    return key;
}

bool ProcessWatcher::startThread() {
    if (threadStarted_) {
        return true;
    }
    ThreadHandle thread = ThreadHandle::createSuspended(
        [](void* self) -> std::uint32_t {
            setCurrentThreadName("tesx-processes");
            static_cast<ProcessWatcher*>(self)->run();
            return 0;
        },
        this);
    threadId_ = thread.id();
    threadStarted_ = queue_ != -1 && thread.resume();
    return threadStarted_;
}

void ProcessWatcher::remove(Key key) {
    std::unique_lock guard(guard_);
    const auto found = entries_.find(key);
    if (found == entries_.end()) {
        return;
    }
    if (running_ == key) {
        if (threadId_ != currentThreadId()) {
            callbackOver_.wait(guard, [&] { return running_ != key; });
        }
        return;
    }
    epoll_ctl(queue_, EPOLL_CTL_DEL, found->second.processFile, nullptr);
    close(found->second.processFile);
    entries_.erase(found);
}

void ProcessWatcher::run() {
    for (;;) {
        epoll_event event{};
        const int count = epoll_wait(queue_, &event, 1, -1);
        if (count == 1) {
            processEnded(event.data.u64);
        } else if (count == -1 && errno != EINTR) {
            return;
        }
    }
}

void ProcessWatcher::processEnded(Key key) {
    std::unique_lock guard(guard_);
    const auto found = entries_.find(key);
    if (found == entries_.end()) {
        return; // removed after the system had told of its end
    }
    const Entry entry = std::move(found->second);
    running_ = key;
    guard.unlock();
    if (entry.isChild) {
        // A program that waits for all of its children may have been faster; then there is nothing left to take.
        siginfo_t status{};
        waitid(P_PIDFD, static_cast<id_t>(entry.processFile), &status, WEXITED | WNOHANG);
    }
    close(entry.processFile);
    if (entry.ended) {
        entry.ended();
    }
    guard.lock();
    running_ = kNoKey;
    entries_.erase(key);
    callbackOver_.notify_all();
}

} // namespace tessera::platform
