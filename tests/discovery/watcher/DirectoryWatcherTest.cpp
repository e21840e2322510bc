// What every system tells, one change at a time. What one of them promises beyond that has tests in its own folder.
#include "discovery/watcher/DirectoryWatcher.h"

#include "discovery/watcher/WatcherTest.h"
#include "support/SlotOf.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace tessera::test {
namespace {

namespace fs = std::filesystem;
using testing_support::eventually;
using testing_support::ScratchFolder;
using Events = std::vector<ChangeEvent>;

class DirectoryWatcherTest : public WatcherFixture {
protected:
    // Makes a folder and waits until that has been told: a system may lose changes that come too fast.
    testing::AssertionResult isTold(const std::string& name) {
        fs::create_directory(scratch_ / name);
        return recorder_.waitFor(ChangeKind::added, name) ? testing::AssertionSuccess()
                                                          : testing::AssertionFailure() << name << " isn't told";
    }
    bool isSilentAbout(const std::string& name) { return recorder_.about(name).empty(); }
};

TEST_F(DirectoryWatcherTest, TellsWhatComesAndGoes) {
    ASSERT_TRUE(watchRoot());
    ASSERT_TRUE(isTold("folder"));
    fs::remove(scratch_ / "folder");
    ASSERT_TRUE(recorder_.waitFor(ChangeKind::removed, "folder"));
    EXPECT_EQ(recorder_.about("folder"),
              (Events{{ChangeKind::added, "folder", ""}, {ChangeKind::removed, "folder", ""}}));
}

TEST_F(DirectoryWatcherTest, TellsWhatIsWritten) {
    scratch_.write("file", "1");
    ASSERT_TRUE(watchRoot());
    scratch_.write("file", "12");
    EXPECT_TRUE(recorder_.waitFor(ChangeKind::modified, "file"));
}

TEST_F(DirectoryWatcherTest, TellsARenameOrItsTwoHalves) {
    ASSERT_TRUE(watchRoot());
    ASSERT_TRUE(isTold("its name"));
    fs::rename(scratch_ / "its name", scratch_ / "another name");
    // Where the halves come in two batches, each is told for itself by what is there now.
    EXPECT_TRUE(recorder_.waitUntil([](const Events& events) {
        const auto has = [&](const ChangeEvent& event) { return testing::Value(events, testing::Contains(event)); };
        return has({ChangeKind::renamed, "its name", "another name"}) ||
               (has({ChangeKind::removed, "its name", ""}) && has({ChangeKind::added, "another name", ""}));
    }));
}

TEST_F(DirectoryWatcherTest, TellsOfWhatStandsBelowSubFolders) {
    ASSERT_TRUE(watchRoot());
    EXPECT_TRUE(isTold("outer"));
    EXPECT_TRUE(isTold("outer/inner"));
    EXPECT_TRUE(isTold("outer/inner/deep"));
}

TEST_F(DirectoryWatcherTest, AFolderThatCantBeOpenedIsNotWatched) {
    EXPECT_FALSE(watcher_.watch(root() + "/nowhere"));
    EXPECT_FALSE(watcher_.watch(genericOf(scratch_.write("file", ""))));
    EXPECT_FALSE(watcher_.watch(""));
    // The list form says yes all the same, and watches the others.
    EXPECT_TRUE(watcher_.watch(std::vector<std::string>{root() + "/nowhere", root()}));
    EXPECT_TRUE(isTold("new"));
}

TEST_F(DirectoryWatcherTest, WatchedTwiceAndUnwatchedOnceItGoesOn) {
    EXPECT_TRUE(watchRoot());
    EXPECT_TRUE(watchRoot());
    watcher_.unwatch(root());
    EXPECT_TRUE(isTold("new"));
}

TEST_F(DirectoryWatcherTest, AfterTheLastUnwatchNothingIsToldOrHeld) {
    const std::size_t files = openFiles();
    ASSERT_TRUE(watchRoot());
    EXPECT_GT(openFiles(), files);
    EXPECT_TRUE(watcher_.unwatch(std::vector<std::string>{root(), "/never/watched"}));
    watcher_.unwatch(root()); // not below zero
    EXPECT_TRUE(eventually([&] { return openFiles() <= files; }));
    fs::create_directory(scratch_ / "silent");
    // A later watch starts a new worker.
    ASSERT_TRUE(watchRoot());
    EXPECT_TRUE(isTold("new"));
    EXPECT_TRUE(isSilentAbout("silent"));
}

TEST_F(DirectoryWatcherTest, AFolderUnwatchedAndWatchedAgainAtOnceIsWatched) {
    for (int i = 0; i < 50; ++i) {
        ASSERT_TRUE(watchRoot());
        watcher_.unwatch(root());
    }
    ASSERT_TRUE(watchRoot());
    EXPECT_TRUE(isTold("new"));
}

TEST_F(DirectoryWatcherTest, TwoFoldersAreToldApart) {
    fs::create_directory(scratch_ / "a");
    fs::create_directory(scratch_ / "b");
    ASSERT_TRUE(watcher_.watch(std::vector<std::string>{root() + "/a", root() + "/b"}));
    EXPECT_TRUE(isTold("a/new"));
    EXPECT_TRUE(isTold("b/new"));
    watcher_.unwatch(root() + "/a");
    fs::create_directory(scratch_ / "a" / "silent");
    EXPECT_TRUE(isTold("b/newer"));
    EXPECT_TRUE(isSilentAbout("a/silent"));
}

TEST_F(DirectoryWatcherTest, StopEndsWithinAMomentAndLetsGo) {
    const std::size_t files = openFiles();
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(watchRoot());
        const auto start = std::chrono::steady_clock::now();
        watcher_.stop();
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    }
    EXPECT_TRUE(eventually([&] { return openFiles() <= files; }));
    watcher_.stop(); // without a worker: nothing
    fs::create_directory(scratch_ / "silent");
    ASSERT_TRUE(watchRoot());
    EXPECT_TRUE(isTold("new"));
    EXPECT_TRUE(isSilentAbout("silent"));
}

TEST_F(DirectoryWatcherTest, StopEndsWhileChangesPourIn) {
    ASSERT_TRUE(watchRoot());
    std::atomic<bool> enough = false;
    std::thread writer([&] {
        for (int i = 0; !enough; ++i) {
            std::error_code ignored;
            fs::create_directory(scratch_ / ("folder " + std::to_string(i % 10)), ignored);
            fs::remove(scratch_ / ("folder " + std::to_string((i + 5) % 10)), ignored);
        }
    });
    EXPECT_TRUE(recorder_.waitUntil([](const Events& events) { return events.size() > 20; }));
    const auto start = std::chrono::steady_clock::now();
    watcher_.stop();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    enough = true;
    writer.join();
}

TEST_F(DirectoryWatcherTest, ListenersComeInTheOrderOfTheirIds) {
    std::vector<int> calls;
    const std::int32_t first = watcher_.addListener([&](const ChangeBatch&) { calls.push_back(1); });
    const std::int32_t second = watcher_.addListener([&](const ChangeBatch&) { calls.push_back(2); });
    EXPECT_GT(first, 0);
    EXPECT_GT(second, first);
    ASSERT_TRUE(watchRoot());
    fs::create_directory(scratch_ / "a");
    ASSERT_TRUE(recorder_.waitFor(ChangeKind::added, "a"));
    watcher_.stop();
    EXPECT_EQ(calls, (std::vector<int>{1, 2}));
    watcher_.removeListener(1'000'000); // nobody's
    watcher_.removeListener(first);
    ASSERT_TRUE(watchRoot());
    fs::create_directory(scratch_ / "b");
    ASSERT_TRUE(recorder_.waitFor(ChangeKind::added, "b"));
    watcher_.stop();
    EXPECT_EQ(calls, (std::vector<int>{1, 2, 2}));
}

TEST_F(DirectoryWatcherTest, AListenerMayRemoveItselfAndUnwatch) {
    std::atomic<int> calls = 0;
    std::int32_t id = 0;
    id = watcher_.addListener([&](const ChangeBatch&) {
        ++calls;
        watcher_.removeListener(id);
        watcher_.addListener({}); // empty ones are passed over
        watcher_.unwatch(root());
    });
    const std::size_t files = openFiles();
    ASSERT_TRUE(watchRoot());
    fs::create_directory(scratch_ / "a");
    EXPECT_TRUE(eventually([&] { return calls == 1 && openFiles() <= files; }));
}

TEST_F(DirectoryWatcherTest, StopWithinAListenerDoesntWaitForItself) {
    const std::size_t files = openFiles();
    watcher_.addListener([&](const ChangeBatch&) { watcher_.stop(); });
    ASSERT_TRUE(watchRoot());
    fs::create_directory(scratch_ / "a");
    EXPECT_TRUE(eventually([&] { return openFiles() <= files; }));
}

TEST_F(DirectoryWatcherTest, ABatchBearsItsTime) {
    std::atomic<std::chrono::system_clock::time_point> time{};
    watcher_.addListener([&](const ChangeBatch& batch) { time = batch.time; });
    ASSERT_TRUE(watchRoot());
    const auto before = std::chrono::system_clock::now();
    fs::create_directory(scratch_ / "a");
    ASSERT_TRUE(recorder_.waitFor(ChangeKind::added, "a"));
    watcher_.stop();
    EXPECT_GE(time.load(), before);
    EXPECT_LE(time.load(), std::chrono::system_clock::now());
}

TEST(DirectoryWatcher, ItsOperationsFollowItsDestructorInOrder) {
    using W = DirectoryWatcher;
    using Many = bool (W::*)(const std::vector<std::string>&);
    // The destructor has two entries.
    expectConsecutive({1, slotOf(&W::stop), slotOf(static_cast<Many>(&W::watch)),
                       slotOf(static_cast<bool (W::*)(const std::string&)>(&W::watch)),
                       slotOf(static_cast<Many>(&W::unwatch)),
                       slotOf(static_cast<void (W::*)(const std::string&)>(&W::unwatch)), slotOf(&W::addListener),
                       slotOf(&W::removeListener)});
}

TEST(DirectoryWatcher, IsStoppedByItsDestructor) {
    const ScratchFolder scratch;
    const std::size_t files = openFiles();
    {
        DirectoryWatcher watcher;
        ASSERT_TRUE(watcher.watch(genericOf(scratch.path())));
    }
    EXPECT_LE(openFiles(), files);
    const DirectoryWatcher idle;
}

} // namespace
} // namespace tessera::test
