#include "platform/FolderChangePort.h"

#include "platform/FolderChangePortFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

namespace tessera::test {
namespace {

namespace fs = std::filesystem;
using platform::FolderChange;
using testing_support::ScratchFolder;

class FolderChangePortLinuxTest : public FolderChangePortFixture {};

// Watches that the system counts for this process.
std::size_t watchCount() {
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator("/proc/self/fdinfo")) {
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            count += line.starts_with("inotify wd:") ? 1u : 0u;
        }
    }
    return count;
}

TEST_F(FolderChangePortLinuxTest, TellsChangesInOrderUnderTheirKey) {
    scratch_.write("a", "1");
    fs::rename(scratch_ / "a", scratch_ / "b");
    fs::remove(scratch_ / "b");
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    EXPECT_EQ(changes_, (Changes{{1, "a"}, {3, "a"}, {4, "a"}, {5, "b"}, {2, "b"}}));
}

TEST_F(FolderChangePortLinuxTest, ClosingLeavesNoWatch) {
    port_->close(kKey);
    EXPECT_EQ(watchCount(), 0u);
}

TEST_F(FolderChangePortLinuxTest, AFolderThatGoesTellsWhatWasLeftAndThenItsEnd) {
    scratch_.write("a", "");
    fs::remove_all(scratch_.path());
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    EXPECT_EQ(changes_, (Changes{{1, "a"}, {2, "a"}}));
    EXPECT_EQ(take(), FolderChangePort::Read::finished);
    EXPECT_EQ(watchCount(), 0u);
}

TEST_F(FolderChangePortLinuxTest, WatchesGoWithTheirFolders) {
    const std::size_t before = watchCount();
    fs::create_directories(scratch_ / "a/b/c");
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    EXPECT_EQ(watchCount(), before + 3);
    fs::remove_all(scratch_ / "a");
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    EXPECT_EQ(watchCount(), before);

    // Moved out of the tree, too, once all that was under way has been read.
    const ScratchFolder elsewhere;
    fs::create_directories(scratch_ / "a/b/c");
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    fs::rename(scratch_ / "a", elsewhere / "a");
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    EXPECT_EQ(watchCount(), before);
}

TEST_F(FolderChangePortLinuxTest, BringsTheHalvesOfARenameTogetherAcrossOtherChanges) {
    // Folder and file renamed again and again before anybody reads.
    fs::create_directory(scratch_ / "d0");
    scratch_.write("d0/f0", "");
    for (int i = 0; i < 200; ++i) {
        const std::string from = "d" + std::to_string(i);
        const std::string to = "d" + std::to_string(i + 1);
        fs::rename(scratch_ / from, scratch_ / to);
        fs::rename(scratch_ / (to + "/f" + std::to_string(i)), scratch_ / (to + "/f" + std::to_string(i + 1)));
    }
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    // By the time the folder could be watched it had moved on: its files' names before that can't be known.
    EXPECT_EQ(changes_[0], (FolderChange{1, "d0"}));
    for (int i = 0; i < 200; ++i) {
        const auto from = std::find(changes_.begin(), changes_.end(), FolderChange{4, "d" + std::to_string(i)});
        ASSERT_NE(from, changes_.end());
        EXPECT_EQ(*std::next(from), (FolderChange{5, "d" + std::to_string(i + 1)}));
    }
    EXPECT_EQ(changes_.back(), (FolderChange{1, "d200/f200"}));
}

TEST_F(FolderChangePortLinuxTest, AnOverflowOfTheQueueIsToldAndTheTreeIsWatchedAgain) {
    int longest = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> longest;
    if (longest == 0 || longest > 200'000) {
        GTEST_SKIP() << "a queue of " << longest << " can't be filled in reasonable time";
    }
    fs::create_directory(scratch_ / "gone");
    scratch_.write("0", "");
    for (int i = 0; i < longest / 2; ++i) {
        fs::rename(scratch_ / std::to_string(i), scratch_ / std::to_string(i + 1));
    }
    // Nobody hears of these.
    fs::remove(scratch_ / "gone");
    fs::create_directories(scratch_ / "unheard/deep");
    bool overflowed = false;
    while (!overflowed) {
        ASSERT_EQ(take(), FolderChangePort::Read::data);
        overflowed = changes_.back() == FolderChange{0, ""};
    }
    scratch_.write("unheard/deep/file", "");
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    EXPECT_THAT(changes_, testing::Contains(FolderChange{1, "unheard/deep/file"}));
    EXPECT_EQ(watchCount(), 3u);
}

TEST_F(FolderChangePortLinuxTest, APathIsKeptWhateverTheWorkingFolder) {
    const fs::path before = fs::current_path();
    fs::current_path(scratch_.path());
    fs::create_directory("sub");
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    FolderChangePort::Key key = 0;
    ASSERT_TRUE(port_->open(8, "sub"));
    fs::current_path(before);
    fs::create_directory(scratch_ / "sub/new");
    scratch_.write("sub/new/file", "");
    Changes found;
    while (key != 8) {
        ASSERT_EQ(port_->wait(key), FolderChangePort::Event::folder);
        ASSERT_EQ(port_->take(key, found), FolderChangePort::Read::data);
    }
    EXPECT_EQ(found, (Changes{{1, "new"}, {1, "new/file"}}));
}

} // namespace
} // namespace tessera::test
