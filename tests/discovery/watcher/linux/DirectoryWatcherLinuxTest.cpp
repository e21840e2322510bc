#include "discovery/watcher/DirectoryWatcher.h"

#include "discovery/watcher/WatcherTest.h"

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

ChangeEvent added(const std::string& path) {
    return {ChangeKind::added, path, ""};
}
ChangeEvent removed(const std::string& path) {
    return {ChangeKind::removed, path, ""};
}
ChangeEvent modified(const std::string& path) {
    return {ChangeKind::modified, path, ""};
}
ChangeEvent renamed(const std::string& path, const std::string& newPath) {
    return {ChangeKind::renamed, path, newPath};
}

class DirectoryWatcherLinuxTest : public WatcherFixture {
protected:
    // A last change, so that all before it has been told as well.
    void finish() {
        fs::create_directory(scratch_ / "the-end");
        ASSERT_TRUE(recorder_.waitFor(ChangeKind::added, "the-end"));
    }
    // All but the last change.
    Events told() {
        finish();
        Events events = recorder_.events();
        std::erase(events, added("the-end"));
        return events;
    }
};

TEST_F(DirectoryWatcherLinuxTest, TellsEachKindOnceInOrder) {
    scratch_.write("here", "1");
    ASSERT_TRUE(watchRoot());
    scratch_.write("here", "12");
    scratch_.write("new", "1");
    fs::rename(scratch_ / "new", scratch_ / "newer");
    fs::remove(scratch_ / "newer");
    finish();
    EXPECT_EQ(recorder_.about("newer"), (Events{renamed("new", "newer"), removed("newer")}));
    EXPECT_EQ(recorder_.about("new"), (Events{added("new"), modified("new"), renamed("new", "newer")}));
    EXPECT_THAT(recorder_.about("here"), testing::Contains(modified("here")));
}

TEST_F(DirectoryWatcherLinuxTest, TellsOfWhatStandsBelowSubFolders) {
    scratch_.write("a/b/c/old", "");
    ASSERT_TRUE(watchRoot());
    fs::rename(scratch_ / "a/b/c/old", scratch_ / "a/new");
    fs::create_directory(scratch_ / "a/b/c/d");
    EXPECT_EQ(told(), (Events{renamed("a/b/c/old", "a/new"), added("a/b/c/d")}));
}

TEST_F(DirectoryWatcherLinuxTest, TellsOfFilesMadeBeforeTheirFolderIsWatched) {
    ASSERT_TRUE(watchRoot());
    // All of it at once: the worker comes behind.
    for (int i = 0; i < 50; ++i) {
        const std::string folder = "d" + std::to_string(i);
        scratch_.write(folder + "/e/f/file", "");
        scratch_.write(folder + "/file", "");
    }
    finish();
    for (int i = 0; i < 50; ++i) {
        const std::string folder = "d" + std::to_string(i);
        for (const std::string& path :
             {folder, folder + "/e", folder + "/e/f", folder + "/e/f/file", folder + "/file"}) {
            ASSERT_TRUE(recorder_.waitFor(ChangeKind::added, path)) << path;
            EXPECT_EQ(recorder_.about(path), Events{added(path)});
        }
    }
}

TEST_F(DirectoryWatcherLinuxTest, TellsAFolderBeforeItsContent) {
    ASSERT_TRUE(watchRoot());
    for (int i = 0; i < 20; ++i) {
        scratch_.write("d" + std::to_string(i) + "/e/file", "");
    }
    ASSERT_TRUE(recorder_.waitFor(ChangeKind::added, "d19/e/file"));
    const Events events = recorder_.events();
    for (auto event = events.begin(); event != events.end(); ++event) {
        const auto slash = event->path.rfind('/');
        if (slash != std::string::npos) {
            EXPECT_NE(std::find(events.begin(), event, added(event->path.substr(0, slash))), event) << *event;
        }
    }
}

TEST_F(DirectoryWatcherLinuxTest, AFolderThatIsRenamedTellsUnderItsNewName) {
    scratch_.write("a/b/file", "");
    ASSERT_TRUE(watchRoot());
    fs::rename(scratch_ / "a", scratch_ / "z");
    fs::rename(scratch_ / "z/b", scratch_ / "y");
    fs::remove(scratch_ / "y/file");
    EXPECT_EQ(told(), (Events{renamed("a", "z"), renamed("z/b", "y"), removed("y/file")}));
}

TEST_F(DirectoryWatcherLinuxTest, FoldersMadeUnderOneNameAndRenamedKeepTheirContent) {
    ASSERT_TRUE(watchRoot());
    constexpr int kCount = 100;
    for (int i = 0; i < kCount; ++i) {
        fs::create_directory(scratch_ / "tmp");
        fs::rename(scratch_ / "tmp", scratch_ / ("d" + std::to_string(i)));
        scratch_.write("d" + std::to_string(i) + "/file", "");
    }
    for (int i = 0; i < kCount; ++i) {
        const std::string file = "d" + std::to_string(i) + "/file";
        ASSERT_TRUE(recorder_.waitFor(ChangeKind::added, file)) << file;
        EXPECT_EQ(recorder_.about(file), Events{added(file)});
    }
    for (int i = 0; i < kCount; ++i) {
        fs::remove(scratch_ / ("d" + std::to_string(i)) / "file");
    }
    finish();
    for (int i = 0; i < kCount; ++i) {
        const std::string file = "d" + std::to_string(i) + "/file";
        EXPECT_EQ(recorder_.about(file), (Events{added(file), removed(file)}));
    }
    EXPECT_EQ(recorder_.about("tmp").size(), 2u * kCount);
}

TEST_F(DirectoryWatcherLinuxTest, WhatLeavesTheTreeIsRemovedAndWhatComesInIsAdded) {
    const ScratchFolder elsewhere;
    scratch_.write("out/file", "");
    elsewhere.write("in/deep/file", "");
    ASSERT_TRUE(watchRoot());
    fs::rename(scratch_ / "out", elsewhere / "out");
    fs::rename(elsewhere / "in", scratch_ / "in");
    ASSERT_TRUE(recorder_.waitFor(ChangeKind::added, "in"));
    elsewhere.write("out/other", ""); // no more ours
    scratch_.write("in/deep/other", "");
    const Events expected = {removed("out"), added("in"), added("in/deep/other")};
    EXPECT_EQ(told(), expected);
}

TEST_F(DirectoryWatcherLinuxTest, ManyFilesLeaveWithoutHoldingUpTheRest) {
    const ScratchFolder elsewhere;
    for (int i = 0; i < 500; ++i) {
        scratch_.write(std::to_string(i), "");
    }
    ASSERT_TRUE(watchRoot());
    for (int i = 0; i < 500; ++i) {
        fs::rename(scratch_ / std::to_string(i), elsewhere / std::to_string(i));
    }
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(told().size(), 500u);
    // Not 500 times the wait for the other half of a rename.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST_F(DirectoryWatcherLinuxTest, LinksArentFollowed) {
    const ScratchFolder elsewhere;
    ASSERT_TRUE(watchRoot());
    fs::create_directory_symlink(elsewhere.path(), scratch_ / "link");
    ASSERT_TRUE(recorder_.waitFor(ChangeKind::added, "link"));
    elsewhere.write("file", "");
    EXPECT_EQ(told(), Events{added("link")});
}

TEST_F(DirectoryWatcherLinuxTest, NamesNeedNotBeUtf8) {
    ASSERT_TRUE(watchRoot());
    scratch_.write("gr\xfc\xdf", "");
    scratch_.write("\u4e2d", "");
    EXPECT_EQ(told(), (Events{added("gr\xfc\xdf"), added("\u4e2d")}));
}

TEST_F(DirectoryWatcherLinuxTest, AFolderThatCantBeOpenedIsNotWatched) {
    const std::size_t before = openFiles();
    EXPECT_FALSE(watcher_.watch(root() + "/nowhere"));
    EXPECT_FALSE(watcher_.watch(scratch_.write("file", "").string()));
    EXPECT_FALSE(watcher_.watch(""));
    EXPECT_EQ(openFiles(), before);
    // The list form says yes all the same, and watches the others.
    EXPECT_TRUE(watcher_.watch(std::vector<std::string>{root() + "/nowhere", root()}));
    scratch_.write("new", "");
    EXPECT_EQ(told(), Events{added("new")});
}

TEST_F(DirectoryWatcherLinuxTest, WatchedTwiceAndUnwatchedOnceItGoesOn) {
    EXPECT_TRUE(watchRoot());
    EXPECT_TRUE(watchRoot());
    watcher_.unwatch(root());
    scratch_.write("new", "");
    EXPECT_EQ(told(), Events{added("new")});
}

TEST_F(DirectoryWatcherLinuxTest, AfterTheLastUnwatchTheWorkerEndsAndNothingIsHeld) {
    const std::size_t files = openFiles();
    const std::size_t threads = runningThreads();
    ASSERT_TRUE(watchRoot());
    EXPECT_GT(openFiles(), files);
    EXPECT_TRUE(watcher_.unwatch(std::vector<std::string>{root(), "/never/watched"}));
    watcher_.unwatch(root()); // not below zero
    // A thread of an earlier test may have been counted: one that has been joined is listed for a moment longer.
    EXPECT_TRUE(eventually([&] { return openFiles() == files && runningThreads() <= threads; }));
    scratch_.write("silent", "");
    // A later watch starts a new worker.
    ASSERT_TRUE(watchRoot());
    scratch_.write("new", "");
    EXPECT_EQ(told(), Events{added("new")});
}

TEST_F(DirectoryWatcherLinuxTest, AFolderUnwatchedAndWatchedAgainAtOnceIsWatched) {
    for (int i = 0; i < 200; ++i) {
        ASSERT_TRUE(watchRoot());
        watcher_.unwatch(root());
    }
    ASSERT_TRUE(watchRoot());
    scratch_.write("new", "");
    EXPECT_EQ(told(), Events{added("new")});
}

TEST_F(DirectoryWatcherLinuxTest, AFolderThatIsDeletedIsLetGo) {
    const std::size_t files = openFiles();
    const std::string folder = (scratch_ / "sub").string();
    fs::create_directory(folder);
    ASSERT_TRUE(watcher_.watch(folder));
    scratch_.write("sub/file", "");
    fs::remove_all(folder);
    ASSERT_TRUE(recorder_.waitFor(ChangeKind::removed, "sub/file"));
    EXPECT_TRUE(eventually([&] { return openFiles() == files; }));
    fs::create_directory(folder);
    EXPECT_TRUE(watcher_.watch(folder));
}

TEST_F(DirectoryWatcherLinuxTest, TwoFoldersAreToldApart) {
    fs::create_directory(scratch_ / "a");
    fs::create_directory(scratch_ / "b");
    scratch_.write("a/wanders", "");
    ASSERT_TRUE(watcher_.watch(std::vector<std::string>{root() + "/a", root() + "/b"}));
    fs::rename(scratch_ / "a/wanders", scratch_ / "b/wanders");
    ASSERT_TRUE(recorder_.waitFor(ChangeKind::removed, "a/wanders"));
    ASSERT_TRUE(recorder_.waitFor(ChangeKind::added, "b/wanders"));
    EXPECT_EQ(recorder_.events().size(), 2u);
    watcher_.unwatch(root() + "/a");
    scratch_.write("a/silent", "");
    scratch_.write("b/heard", "");
    ASSERT_TRUE(recorder_.waitFor(ChangeKind::added, "b/heard"));
    EXPECT_TRUE(recorder_.about("a/silent").empty());
}

TEST_F(DirectoryWatcherLinuxTest, AFolderAndOneWithinItBothTell) {
    fs::create_directory(scratch_ / "sub");
    ASSERT_TRUE(watchRoot());
    ASSERT_TRUE(watcher_.watch(root() + "/sub/")); // the path as it was given
    scratch_.write("sub/file", "");
    const auto count = [](const Events& events) { return std::count(events.begin(), events.end(), added("sub/file")); };
    EXPECT_TRUE(recorder_.waitUntil([&](const Events& events) { return count(events) == 2; }));
}

TEST_F(DirectoryWatcherLinuxTest, StopEndsWithinAMoment) {
    const std::size_t files = openFiles();
    const std::size_t threads = runningThreads();
    for (int i = 0; i < 50; ++i) {
        ASSERT_TRUE(watchRoot());
        const auto start = std::chrono::steady_clock::now();
        watcher_.stop();
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
        EXPECT_EQ(openFiles(), files);
    }
    EXPECT_TRUE(eventually([&] { return runningThreads() <= threads; }));
    watcher_.stop(); // without a worker: nothing
    const std::size_t batches = recorder_.batches();
    scratch_.write("silent", "");
    ASSERT_TRUE(watchRoot());
    scratch_.write("new", "");
    EXPECT_EQ(told(), Events{added("new")});
    EXPECT_GT(recorder_.batches(), batches);
}

TEST_F(DirectoryWatcherLinuxTest, StopEndsWhileChangesPourIn) {
    ASSERT_TRUE(watchRoot());
    std::atomic<bool> enough = false;
    std::thread writer([&] {
        for (int i = 0; !enough; ++i) {
            scratch_.write("d" + std::to_string(i % 10) + "/file", "x");
            fs::remove_all(scratch_ / ("d" + std::to_string((i + 5) % 10)));
        }
    });
    EXPECT_TRUE(recorder_.waitUntil([](const Events& events) { return events.size() > 200; }));
    const auto start = std::chrono::steady_clock::now();
    watcher_.stop();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    enough = true;
    writer.join();
}

} // namespace
} // namespace tessera::test
