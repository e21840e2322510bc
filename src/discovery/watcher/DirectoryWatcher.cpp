#include "discovery/watcher/DirectoryWatcher.h"

#include "discovery/uri/FileSystem.h"
#include "discovery/uri/FileSystemRegistry.h"
#include "foundation/threads/FLock.h"
#include "foundation/threads/FLockGuard.h"
#include "foundation/threads/FThread.h"

#include <algorithm>
#include <utility>

namespace tessera {

namespace {

// One for all watchers of the process. Never destroyed: a worker may outlive the static objects.
FLock& watcherLock() {
    static FLock* const lock = new FLock("FLock");
    return *lock;
}

bool exists(const std::string& path) {
    FileSystem* files = defaultFileSystem();
    const auto status = files->status(Uri::fromPath(path));
    return status.ok() && status.value().exists();
}

} // namespace

class DirectoryWatcher::Worker : public FThread {
public:
    explicit Worker(DirectoryWatcher& watcher) : FThread("com.marlgrove.directory-watcher"), watcher_(watcher) {}

    std::uint32_t run() override {
        watcher_.work();
        return 0;
    }

private:
    DirectoryWatcher& watcher_;
};

DirectoryWatcher::DirectoryWatcher() : listener_([this](const ChangeBatch& batch) { callListeners(batch); }) {}

DirectoryWatcher::~DirectoryWatcher() {
    stop();
    const FLockGuard guard(watcherLock());
    folders_.clear();
    port_.reset();
    worker_.reset();
}

void DirectoryWatcher::stop() {
    stopFlag_ = true;
    std::unique_ptr<FThread> worker;
    {
        const FLockGuard guard(watcherLock());
        if (started_ && port_ != nullptr) {
            port_->postStop();
        }
        if (worker_ != nullptr && worker_->isCurrent()) {
            return; // it can't wait for itself; it ends when the listener has returned
        }
        worker = std::move(worker_);
    }
    if (worker != nullptr) {
        worker->join();
    }
}

bool DirectoryWatcher::watch(const std::vector<std::string>& folders) {
    for (const std::string& folder : folders) {
        watch(folder);
    }
    return true;
}

bool DirectoryWatcher::watch(const std::string& folder) {
    const FLockGuard guard(watcherLock());
    const auto known = folders_.find(folder);
    // An entry without references was let go a moment ago and only waits for the worker to remove it. The folder is
    // opened again under a new handle, and the end of the old one then meets nothing.
    if (known != folders_.end() && known->second.references != 0) {
        ++known->second.references;
        return true;
    }
    const bool opened = openFolder(folder);
    if (!started_) {
        port_.reset();
    }
    return opened;
}

bool DirectoryWatcher::openFolder(const std::string& folder) {
    if (port_ == nullptr) {
        port_ = Port::create();
    }
    const Port::Key handle = lastHandle_ + 1;
    if (port_ == nullptr || !port_->open(handle, folder)) {
        return false;
    }
    lastHandle_ = handle;
    if (!startWorker()) {
        return false;
    }
    folders_[folder] = {folder, handle, 1};
    return true;
}

bool DirectoryWatcher::startWorker() {
    if (started_) {
        return true;
    }
    if (worker_ != nullptr) {
        worker_->join(); // it ended by itself, and needs no lock any more
    }
    stopFlag_ = false;
    worker_ = std::make_unique<Worker>(*this);
    started_ = true;
    worker_->start();
    if (!worker_->getHandle()) {
        started_ = false;
        worker_.reset();
    }
    return started_;
}

bool DirectoryWatcher::unwatch(const std::vector<std::string>& folders) {
    for (const std::string& folder : folders) {
        unwatch(folder);
    }
    return true;
}

void DirectoryWatcher::unwatch(const std::string& folder) {
    const FLockGuard guard(watcherLock());
    const auto known = folders_.find(folder);
    if (known == folders_.end() || known->second.references == 0) {
        return;
    }
    // The entry stays until the worker has been told of the end.
    if (--known->second.references == 0) {
        port_->close(known->second.handle);
    }
}

std::int32_t DirectoryWatcher::addListener(Listener listener) {
    const FLockGuard guard(watcherLock());
    listeners_.emplace(++lastListener_, std::make_shared<const Listener>(std::move(listener)));
    return lastListener_;
}

void DirectoryWatcher::removeListener(std::int32_t id) {
    const FLockGuard guard(watcherLock());
    listeners_.erase(id);
}

// The worker's thread.
void DirectoryWatcher::work() {
    std::shared_ptr<Port> port;
    {
        const FLockGuard guard(watcherLock());
        port = port_;
    }
    for (bool goesOn = true; goesOn;) {
        Port::Key key = 0;
        const Port::Event event = port->wait(key);
        const bool stopped = stopFlag_;
        const FLockGuard guard(watcherLock());
        goesOn = !stopped && handle(event, key);
        if (!goesOn) {
            // Still under the lock, so that a watch that comes now starts a new worker.
            folders_.clear();
            port_.reset();
            started_ = false;
        }
    }
}

// False ends the worker.
bool DirectoryWatcher::handle(Port::Event event, Port::Key key) {
    if (event != Port::Event::folder) {
        return event == Port::Event::skip;
    }
    switch (port_->take(key, changes_)) {
    case Port::Read::finished:
        std::erase_if(folders_, [key](const auto& entry) { return entry.second.handle == key; });
        return !folders_.empty();
    case Port::Read::data:
        deliver(key);
        break;
    case Port::Read::again:
        break;
    }
    port_->read(key);
    return true;
}

void DirectoryWatcher::deliver(Port::Key key) {
    const auto found =
        std::find_if(folders_.begin(), folders_.end(), [key](const auto& entry) { return entry.second.handle == key; });
    if (found != folders_.end()) {
        listener_(makeChangeBatch(found->second.path, changes_, exists));
    }
}

void DirectoryWatcher::callListeners(const ChangeBatch& batch) {
    const FLockGuard guard(watcherLock());
    // By number: a listener may add and remove others, and itself.
    for (auto next = listeners_.begin(); next != listeners_.end();) {
        const std::int32_t id = next->first;
        const std::shared_ptr<const Listener> listener = next->second;
        if (*listener) {
            (*listener)(batch);
        }
        next = listeners_.upper_bound(id);
    }
}

} // namespace tessera
