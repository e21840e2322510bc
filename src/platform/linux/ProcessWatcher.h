// ProcessWatcher: the one thread of this process that waits for the end of others. It is made at the first use and
// stays, as nothing is gained by ending it.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace tessera::platform {

class ProcessWatcher {
public:
    using Key = std::uint64_t;
    static constexpr Key kNoKey = 0;

    static ProcessWatcher& instance();

    // The watcher takes the process descriptor over. When the process ends, `ended` is called once, on the watcher's
    // thread. kNoKey, with the descriptor closed, when it can't be watched.
    Key add(int processFile, std::function<void()> ended);
    // The same for a child: what the system keeps of it for its parent goes as well.
    Key addChild(int processFile);
    // After that `ended` isn't running and won't be called. From within `ended` it doesn't wait for itself.
    void remove(Key key);

private:
    struct Entry {
        int processFile;
        std::function<void()> ended;
        bool isChild;
    };

    ProcessWatcher();
    Key add(Entry entry);
    bool startThread();
    void run();
    void processEnded(Key key);

    int queue_;
    std::mutex guard_;
    std::condition_variable callbackOver_;
    bool threadStarted_ = false;
    std::uint32_t threadId_ = 0;
    Key lastKey_ = kNoKey;
    Key running_ = kNoKey;
    std::unordered_map<Key, Entry> entries_;
};

} // namespace tessera::platform
