#include "platform/FolderChangePort.h"

#include "platform/FolderChangePortFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <vector>

namespace tessera::test {
namespace {

namespace fs = std::filesystem;
using platform::FolderChange;
using testing_support::ScratchFolder;
using testing_support::utf8OfPath;

class FolderChangePortTest : public FolderChangePortFixture {};

TEST_F(FolderChangePortTest, TellsAChangeUnderItsKeyAndGoesOn) {
    fs::create_directory(scratch_ / "a");
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    EXPECT_EQ(changes_, (Changes{{1, "a"}}));
    port_->read(kKey);
    fs::remove(scratch_ / "a");
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    EXPECT_EQ(changes_, (Changes{{2, "a"}}));
}

TEST_F(FolderChangePortTest, TellsARenameAsTwoHalvesOneBehindTheOther) {
    fs::create_directory(scratch_ / "its name");
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    port_->read(kKey);
    fs::rename(scratch_ / "its name", scratch_ / "another name");
    Changes halves;
    while (halves.size() < 2) {
        ASSERT_EQ(take(), FolderChangePort::Read::data);
        halves.insert(halves.end(), changes_.begin(), changes_.end());
        port_->read(kKey);
    }
    EXPECT_EQ(halves, (Changes{{4, "its name"}, {5, "another name"}}));
}

TEST_F(FolderChangePortTest, TellsWhatChangesInSubFolders) {
    fs::create_directory(scratch_ / "sub");
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    port_->read(kKey);
    fs::create_directory(scratch_ / "sub" / "inside");
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    EXPECT_THAT(changes_, testing::Contains(FolderChange{1, "sub/inside"}));
}

TEST_F(FolderChangePortTest, NoFolderIsNotOpened) {
    EXPECT_FALSE(port_->open(8, utf8OfPath(scratch_ / "nowhere")));
    EXPECT_FALSE(port_->open(8, utf8OfPath(scratch_.write("file", ""))));
}

TEST_F(FolderChangePortTest, FoldersAreToldApart) {
    const ScratchFolder other;
    ASSERT_TRUE(port_->open(8, utf8OfPath(other.path())));
    fs::create_directory(other / "a");
    FolderChangePort::Key key = 0;
    ASSERT_EQ(port_->wait(key), FolderChangePort::Event::folder);
    EXPECT_EQ(key, 8u);
    EXPECT_EQ(port_->take(key, changes_), FolderChangePort::Read::data);
    EXPECT_EQ(changes_, (Changes{{1, "a"}}));
    fs::create_directory(scratch_ / "b");
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    EXPECT_EQ(changes_, (Changes{{1, "b"}}));
}

TEST_F(FolderChangePortTest, ClosingGivesTheKeyOnceMore) {
    port_->close(kKey);
    EXPECT_EQ(take(), FolderChangePort::Read::finished);
    port_->close(kKey); // closed already
    port_->postStop();
    FolderChangePort::Key key = 0;
    EXPECT_EQ(port_->wait(key), FolderChangePort::Event::stop);
}

TEST_F(FolderChangePortTest, OneWaitPerPost) {
    FolderChangePort::Key key = 0;
    port_->postStop();
    EXPECT_EQ(port_->wait(key), FolderChangePort::Event::stop);
    port_->close(kKey);
    EXPECT_EQ(take(), FolderChangePort::Read::finished);
    port_->postStop();
    EXPECT_EQ(port_->wait(key), FolderChangePort::Event::stop);
}

TEST_F(FolderChangePortTest, GoesWithWhatIsUnderWay) {
    const ScratchFolder other;
    ASSERT_TRUE(port_->open(8, utf8OfPath(other.path())));
    fs::create_directory(other / "a");
    port_->close(kKey);
    port_.reset();
    // What the system had still to write has nowhere to go, and goes nowhere.
    fs::create_directory(other / "b");
}

} // namespace
} // namespace tessera::test
