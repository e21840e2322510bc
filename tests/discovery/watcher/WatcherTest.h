// What the watcher's tests share: a recorder for what is told, and a look at what the process holds open.
#pragma once

#include "discovery/watcher/DirectoryWatcher.h"
#include "discovery/watcher/PrintedChange.h"
#include "support/Eventually.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <vector>

namespace tessera::test {

// As watchers spell paths.
inline std::string genericOf(const std::filesystem::path& path) {
    return path.generic_string();
}

// Keeps all that is told, with paths relative to the folder.
class Recorder {
public:
    Recorder(DirectoryWatcher& watcher, const std::filesystem::path& folder) : prefix_(genericOf(folder) + "/") {
        watcher.addListener([this](const ChangeBatch& batch) { take(batch); });
    }

    void take(const ChangeBatch& batch) {
        const std::lock_guard guard(lock_);
        for (ChangeEvent event : batch.events) {
            shorten(event.path);
            shorten(event.newPath);
            ++counts_[static_cast<std::size_t>(event.kind)];
            events_.push_back(std::move(event));
        }
        ++batches_;
        changed_.notify_all();
    }

    template <class Condition>
    bool waitUntil(Condition condition, std::chrono::seconds limit = std::chrono::seconds(60)) {
        std::unique_lock guard(lock_);
        return changed_.wait_for(guard, limit, [&] { return condition(events_); });
    }
    // Until that change has been told.
    bool waitFor(ChangeKind kind, const std::string& path) {
        return waitUntil([&](const std::vector<ChangeEvent>& events) {
            return std::any_of(events.begin(), events.end(),
                               [&](const ChangeEvent& event) { return event.kind == kind && event.path == path; });
        });
    }
    std::vector<ChangeEvent> events() {
        const std::lock_guard guard(lock_);
        return events_;
    }
    // About this path, old or new.
    std::vector<ChangeEvent> about(const std::string& path) {
        std::vector<ChangeEvent> found;
        for (const ChangeEvent& event : events()) {
            if (event.path == path || event.newPath == path) {
                found.push_back(event);
            }
        }
        return found;
    }
    // Until as many changes of the kind have been told.
    bool waitForCount(ChangeKind kind, std::size_t count) {
        return waitUntil(
            [&](const std::vector<ChangeEvent>&) { return counts_[static_cast<std::size_t>(kind)] >= count; });
    }
    std::size_t count(ChangeKind kind) {
        const std::lock_guard guard(lock_);
        return counts_[static_cast<std::size_t>(kind)];
    }
    std::size_t batches() {
        const std::lock_guard guard(lock_);
        return batches_;
    }

private:
    void shorten(std::string& path) const {
        if (path.starts_with(prefix_)) {
            path.erase(0, prefix_.size());
        }
    }

    const std::string prefix_;
    std::mutex lock_;
    std::condition_variable changed_;
    std::vector<ChangeEvent> events_;
    std::array<std::size_t, 5> counts_{};
    std::size_t batches_ = 0;
};

// A watcher, its recorder, and a scratch folder that isn't watched yet.
class WatcherFixture : public testing::Test {
protected:
    // The worker may still be in a listener, also when a listener has stopped the watcher.
    ~WatcherFixture() override { watcher_.stop(); }

    std::string root() const { return genericOf(scratch_.path()); }
    bool watchRoot() { return watcher_.watch(root()); }

    testing_support::ScratchFolder scratch_;
    DirectoryWatcher watcher_;
    Recorder recorder_{watcher_, scratch_.path()};
};

// The files and folders that this process has open, with what tells it of their changes, and its threads.
std::size_t openFiles();
std::size_t runningThreads();

} // namespace tessera::test
