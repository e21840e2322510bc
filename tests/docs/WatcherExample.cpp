#include "discovery/watcher/DirectoryWatcher.h"
#include "foundation/messages/FTaskList.h"
#include "support/Eventually.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tessera::test {
namespace {

// [folder watcher]
class TakeList {
public:
    explicit TakeList(const std::string& folder) {
        // The listener runs on the watcher's worker: it hands on what it is told, and returns.
        watcher_.addListener([this](const ChangeBatch& batch) {
            FTaskList::process().post([guard = std::weak_ptr(alive_), this, batch] {
                if (!guard.expired()) {
                    take(batch);
                }
            });
        });
        watching = watcher_.watch(folder);
    }

    std::vector<std::string> added;
    bool watching = false;

private:
    void take(const ChangeBatch& batch) {
        for (const ChangeEvent& event : batch.events) {
            if (event.kind == ChangeKind::added) {
                added.push_back(event.path);
            }
        }
    }

    // A task may still stand in the list when this object goes.
    std::shared_ptr<int> alive_ = std::make_shared<int>(0);
    // The last member: it goes first, and with it the worker.
    DirectoryWatcher watcher_;
};
// [folder watcher]

TEST(WatcherExample, ANewFileIsToldOnTheThreadOfTheIdleTask) {
    const testing_support::ScratchFolder folder;
    TakeList takes(folder.path().string());
    ASSERT_TRUE(takes.watching);
    folder.write("take.wav", "1");
    const std::string path = folder.path().string() + "/take.wav";
    EXPECT_TRUE(testing_support::eventually([&takes, &path] {
        FTaskList::process().runTasks();
        return std::find(takes.added.begin(), takes.added.end(), path) != takes.added.end();
    }));
}

TEST(WatcherExample, ATaskThatComesTooLateDoesNothing) {
    const testing_support::ScratchFolder folder;
    {
        const TakeList takes(folder.path().string());
        folder.write("take.wav", "1");
    }
    FTaskList::process().runTasks();
}

} // namespace
} // namespace tessera::test
