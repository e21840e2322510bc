#include "platform/Folder.h"

#include "support/ScratchFolder.h"
#include "support/Skips.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

namespace tessera::platform {
namespace {

namespace fs = std::filesystem;

std::u16string textOf(const fs::path& native) {
    std::u16string text = native.u16string();
    for (char16_t& c : text) {
        c = c == u'/' ? u'\\' : c;
    }
    return text;
}

class FolderTest : public testing::Test {
protected:
    Folder open(const std::string& name = "") {
        std::int32_t error = 0;
        Folder folder = Folder::open(textOf(scratch_ / name), error);
        EXPECT_EQ(folder.isOpen(), error == 0);
        return folder;
    }
    static std::set<std::u16string> namesIn(Folder& folder) {
        std::set<std::u16string> names;
        while (const FolderEntry* entry = folder.next()) {
            names.emplace(entry->name);
        }
        return names;
    }

    testing_support::ScratchFolder scratch_;
    std::int32_t error_ = 0;
};

TEST_F(FolderTest, AFolderThatIsntOpenHasNothing) {
    Folder none;
    EXPECT_FALSE(none.isOpen());
    EXPECT_EQ(none.next(), nullptr);
    EXPECT_EQ(none.error(), 0);
    none.rewind();
    EXPECT_FALSE(Folder::open(textOf(scratch_ / "missing"), error_).isOpen());
    EXPECT_NE(error_, 0);
    scratch_.write("file", "");
    EXPECT_FALSE(Folder::open(textOf(scratch_ / "file"), error_).isOpen());
}

TEST_F(FolderTest, TellsKindSizeAndTime) {
    scratch_.write("file", "12345");
    Folder folder = open();
    const FolderEntry* entry = folder.next();
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->name, u"file");
    EXPECT_FALSE(entry->isFolder);
    EXPECT_FALSE(entry->isLink);
    EXPECT_FALSE(entry->isHidden);
    EXPECT_EQ(entry->size, 5);
    const auto time = fs::last_write_time(scratch_ / "file");
    const auto seconds =
        std::chrono::floor<std::chrono::seconds>(std::chrono::file_clock::to_sys(time).time_since_epoch());
    EXPECT_EQ(entry->modified, seconds.count());
    EXPECT_EQ(folder.next(), nullptr);
    EXPECT_EQ(folder.error(), 0);
}

TEST_F(FolderTest, SaysThatItLeftANameOut) {
    if (const char* reason = testing_support::whyNoOddNames()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("good", "");
    scratch_.write("back\\slash", "");
    Folder folder = open();
    EXPECT_EQ(namesIn(folder), std::set<std::u16string>{u"good"});
    EXPECT_NE(folder.error(), 0);
    fs::remove(scratch_ / "back\\slash");
    folder.rewind();
    EXPECT_EQ(folder.error(), 0);
    EXPECT_EQ(namesIn(folder), std::set<std::u16string>{u"good"});
    EXPECT_EQ(folder.error(), 0);
}

TEST_F(FolderTest, StaysTheSameFolderUnderAnotherName) {
    scratch_.write("before/file", "x");
    Folder folder = open("before");
    fs::rename(scratch_ / "before", scratch_ / "after");
    scratch_.write("before/impostor", "precious");
    EXPECT_EQ(namesIn(folder), std::set<std::u16string>{u"file"});
    EXPECT_FALSE(folder.deleteFile(u"impostor", error_));
    EXPECT_TRUE(folder.deleteFile(u"file", error_));
    EXPECT_EQ(scratch_.read("before/impostor"), "precious");
}

TEST_F(FolderTest, NamesThatLeadElsewhereNameNothing) {
    scratch_.write("outside", "precious");
    scratch_.write("folder/inner/file", "x");
    Folder folder = open("folder");
    for (const char16_t* name : {u"..\\outside", u"../outside", u"inner\\file", u"inner/file", u".", u"..", u""}) {
        EXPECT_FALSE(folder.deleteFile(name, error_));
        EXPECT_FALSE(folder.openFile(name, error_).isOpen());
        EXPECT_FALSE(folder.openFolder(name, error_).isOpen());
        EXPECT_NE(error_, 0);
    }
    EXPECT_EQ(scratch_.read("outside"), "precious");
    EXPECT_EQ(scratch_.read("folder/inner/file"), "x");
}

TEST_F(FolderTest, LinksAreNeverEntered) {
    if (const char* reason = testing_support::whyNoSymbolicLinks()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("outside/file", "precious");
    fs::create_directory(scratch_ / "folder");
    fs::create_directory_symlink(scratch_ / "outside", scratch_ / "folder/way-out");
    fs::create_symlink(scratch_ / "outside/file", scratch_ / "folder/file-link");
    const Folder folder = open("folder");
    EXPECT_FALSE(folder.openFolder(u"way-out", error_).isOpen());
    EXPECT_FALSE(folder.openFile(u"file-link", error_).isOpen());
    EXPECT_TRUE(folder.deleteFile(u"way-out", error_));
    EXPECT_EQ(scratch_.read("outside/file"), "precious");
}

TEST_F(FolderTest, ANameThatLooksLikeADriveIsAName) {
    if (const char* reason = testing_support::whyNoOddNames()) {
        GTEST_SKIP() << reason;
    }
    scratch_.write("a:", "x");
    Folder folder = open();
    EXPECT_EQ(namesIn(folder), std::set<std::u16string>{u"a:"});
    EXPECT_TRUE(folder.openFile(u"a:", error_).isOpen());
    EXPECT_TRUE(folder.deleteFile(u"a:", error_));
}

TEST_F(FolderTest, MakesOnlyWhatIsNew) {
    scratch_.write("model", "x");
    fs::permissions(scratch_ / "model", fs::perms(0500));
    const Folder folder = open();
    const File model = folder.openFile(u"model", error_);
    ASSERT_TRUE(model.isOpen());
    EXPECT_TRUE(folder.makeFile(u"new", model, error_).isOpen());
    EXPECT_EQ(fs::status(scratch_ / "new").permissions(), fs::status(scratch_ / "model").permissions());
    EXPECT_FALSE(folder.makeFile(u"model", model, error_).isOpen());
    EXPECT_TRUE(folder.makeFolder(u"folder", error_).isOpen());
    EXPECT_FALSE(folder.makeFolder(u"folder", error_).isOpen());
    EXPECT_EQ(scratch_.read("model"), "x");
}

TEST_F(FolderTest, WithoutAModelAFileHasTheRightsOfAnyNewOne) {
    scratch_.write("model", "x");
    const Folder folder = open();
    std::u16string name;
    EXPECT_TRUE(folder.makeUnfinishedFile(File(), name, error_).isOpen());
    EXPECT_TRUE(folder.makeFile(u"new", File(), error_).isOpen());
    EXPECT_EQ(fs::status(scratch_ / "new").permissions(), fs::status(scratch_ / "model").permissions());
}

TEST_F(FolderTest, UnfinishedFilesAreHiddenAndEachItsOwn) {
    scratch_.write("model", "x");
    const Folder folder = open();
    const File model = folder.openFile(u"model", error_);
    std::u16string first;
    std::u16string second;
    EXPECT_TRUE(folder.makeUnfinishedFile(model, first, error_).isOpen());
    EXPECT_TRUE(folder.makeUnfinishedFile(model, second, error_).isOpen());
    EXPECT_NE(first, second);
    EXPECT_EQ(first.front(), u'.');
    EXPECT_EQ(scratch_.entryCount(), 3u);
}

TEST_F(FolderTest, OnlyEmptyFoldersAreDeleted) {
    scratch_.write("full/file", "x");
    fs::create_directory(scratch_ / "empty");
    const Folder folder = open();
    EXPECT_FALSE(folder.deleteFolder(u"full", error_));
    EXPECT_FALSE(folder.deleteFile(u"empty", error_));
    EXPECT_TRUE(folder.deleteFolder(u"empty", error_));
    EXPECT_EQ(scratch_.read("full/file"), "x");
}

TEST_F(FolderTest, AReplacedFileHasTheNewContentAndTheOldRights) {
    scratch_.write("new", "new");
    scratch_.write("old", "old");
    fs::permissions(scratch_ / "old", fs::perms(0400));
    const fs::perms before = fs::status(scratch_ / "old").permissions();
    const Folder folder = open();
    EXPECT_TRUE(folder.replaceFile(u"new", u"old", error_));
    EXPECT_EQ(scratch_.read("old"), "new");
    EXPECT_EQ(fs::status(scratch_ / "old").permissions(), before);
    EXPECT_FALSE(scratch_.has("new"));
    EXPECT_FALSE(folder.replaceFile(u"missing", u"old", error_));
    EXPECT_EQ(scratch_.read("old"), "new");
}

TEST(LinkExtension, IsFoundInAnyCase) {
    EXPECT_TRUE(hasLinkExtension(u"a.lnk"));
    EXPECT_TRUE(hasLinkExtension(u"a.LnK"));
    EXPECT_TRUE(hasLinkExtension(u".lnk"));
    EXPECT_FALSE(hasLinkExtension(u"a.lnk2"));
    EXPECT_FALSE(hasLinkExtension(u"lnk"));
    EXPECT_FALSE(hasLinkExtension(u""));
}

} // namespace
} // namespace tessera::platform
