// DirectoryWatcher: tells listeners what changes below a set of folders, sub-folders included: names, folders, last
// write, creation.
//
// Made idle; the first watched folder starts the one worker thread, which ends by itself when the last one has gone, or
// by stop(). Folders are paths in UTF-8 with "/"; the same folder may be watched several times and is let go with the
// last unwatch. A folder that is deleted is let go by itself. See FolderChangePort.h for what each system tells, and
// for what it can't.
//
// Every operation may be called from any thread. One lock of the process guards all watchers. Listeners run on the
// worker with that lock held: they may call any operation here (stop then doesn't wait), and must not wait for another
// thread that does. Destroying a watcher stops it.
//
// Nothing is said about what can't be watched, but by the result of watch.
#pragma once

#include "discovery/watcher/ChangeBatch.h"
#include "discovery/watcher/WatchedFolder.h"
#include "platform/FolderChangePort.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tessera {

class FThread;

class DirectoryWatcher {
public:
    using Listener = std::function<void(const ChangeBatch& batch)>;

    DirectoryWatcher();
    DirectoryWatcher(const DirectoryWatcher&) = delete;
    DirectoryWatcher& operator=(const DirectoryWatcher&) = delete;
    virtual ~DirectoryWatcher();

    // Waits for the worker's end, which comes as soon as a listener that is running has returned. Afterwards no folder
    // is watched. Without a worker nothing happens. A later watch starts anew.
    virtual void stop();
    // True, whatever could be opened.
    virtual bool watch(const std::vector<std::string>& folders);
    // True when the folder could be opened, or is watched already. Changes from here on are told.
    virtual bool watch(const std::string& folder);
    // True.
    virtual bool unwatch(const std::vector<std::string>& folders);
    virtual void unwatch(const std::string& folder);
    // An id above 0. Each batch comes once; listeners are called in the order of their ids.
    virtual std::int32_t addListener(Listener listener);
    // Afterwards it isn't called any more, unless this is called from within it.
    virtual void removeListener(std::int32_t id);

private:
    using Port = platform::FolderChangePort;
    class Worker;

    bool openFolder(const std::string& folder);
    bool startWorker();
    void work();
    bool handle(Port::Event event, Port::Key key);
    void deliver(Port::Key key);
    void callListeners(const ChangeBatch& batch);

    // All but stopFlag_ are guarded by the process's lock.
    std::unique_ptr<FThread> worker_;
    bool started_ = false;
    std::atomic<bool> stopFlag_ = false; // seen without the lock
    std::shared_ptr<Port> port_;
    std::map<std::string, WatchedFolder, std::less<>> folders_;
    Listener listener_;
    std::map<std::int32_t, std::shared_ptr<const Listener>> listeners_;

    Port::Key lastHandle_ = 0;
    std::int32_t lastListener_ = 0;
    std::vector<platform::FolderChange> changes_;
};

} // namespace tessera
