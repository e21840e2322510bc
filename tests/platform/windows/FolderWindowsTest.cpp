#include "platform/Folder.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <set>
#include <windows.h>

namespace tessera::platform {
namespace {

class FolderWindowsTest : public testing::Test {
protected:
    Folder open(const std::string& name = "") {
        Folder folder = Folder::open((scratch_ / name).make_preferred().u16string(), error_);
        EXPECT_TRUE(folder.isOpen());
        return folder;
    }
    DWORD attributesOf(const std::filesystem::path& path) { return ::GetFileAttributesW(path.c_str()); }

    testing_support::ScratchFolder scratch_;
    std::int32_t error_ = 0;
};

// The part behind a colon is another content of the file.
TEST_F(FolderWindowsTest, AColonLeadsNowhere) {
    scratch_.write("file", "precious");
    const Folder folder = open();
    for (const char16_t* name : {u"file:stream", u"file::$DATA", u"C:", u":"}) {
        EXPECT_FALSE(folder.openFile(name, error_).isOpen());
        EXPECT_FALSE(folder.deleteFile(name, error_));
        EXPECT_NE(error_, 0);
    }
    EXPECT_EQ(scratch_.read("file"), "precious");
}

TEST_F(FolderWindowsTest, NamesAreFoundInAnyCase) {
    scratch_.write("file", "x");
    const Folder folder = open();
    EXPECT_TRUE(folder.openFile(u"FILE", error_).isOpen());
    EXPECT_TRUE(folder.deleteFile(u"File", error_));
    EXPECT_FALSE(scratch_.has("file"));
}

TEST_F(FolderWindowsTest, UnfinishedFilesAreMarkedAsHiddenUntilTheyHaveTheirName) {
    scratch_.write("model", "x");
    const Folder folder = open();
    std::u16string name;
    {
        const File model = folder.openFile(u"model", error_);
        EXPECT_TRUE(folder.makeUnfinishedFile(model, name, error_).isOpen());
    }
    EXPECT_NE(attributesOf(scratch_.path() / name) & FILE_ATTRIBUTE_HIDDEN, 0u);
    EXPECT_TRUE(folder.replaceFile(name, u"finished", error_));
    EXPECT_EQ(attributesOf(scratch_ / "finished") & FILE_ATTRIBUTE_HIDDEN, 0u);
}

TEST_F(FolderWindowsTest, AFolderLargerThanOneBlockIsWalkedWhole) {
    constexpr int kFiles = 700;
    for (int i = 0; i < kFiles; ++i) {
        scratch_.write(std::to_string(i) + std::string(100, 'n'), "");
    }
    Folder folder = open();
    for (int round = 0; round < 2; ++round) {
        std::set<std::u16string> names;
        while (const FolderEntry* entry = folder.next()) {
            EXPECT_TRUE(names.emplace(entry->name).second);
        }
        EXPECT_EQ(names.size(), std::size_t{kFiles});
        folder.rewind();
    }
}

// As other programs see a name, an end of dots and blanks is none of it.
TEST_F(FolderWindowsTest, ADotAtTheEndOfANameThatIsTakenMeansNothing) {
    scratch_.write("new", "new");
    scratch_.write("old", "old");
    const Folder folder = open();
    EXPECT_TRUE(folder.replaceFile(u"new", u"old. .", error_));
    EXPECT_EQ(scratch_.read("old"), "new");
    EXPECT_EQ(scratch_.entryCount(), 1u);
}

} // namespace
} // namespace tessera::platform
