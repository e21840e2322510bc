#include "platform/FileEntries.h"

#include "platform/NativePath.h"
#include "support/FileMarks.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tessera::platform {
namespace {

class FileEntriesTest : public testing::Test {
protected:
    std::u16string path(const std::string& name) const {
        return *fromNativePath(testing_support::utf8OfPath(scratch / name));
    }

    testing_support::ScratchFolder scratch;
    std::int32_t error = -7;
};

TEST_F(FileEntriesTest, AFolderThatIsThereIsFlushed) {
    scratch.write("a", "text");
    EXPECT_TRUE(flushFolder(path(""), error));
    EXPECT_EQ(error, 0);
}

TEST_F(FileEntriesTest, WhatIsNoFolderIsNotFlushed) {
    scratch.write("a", "text");
    for (const char* name : {"a", "b"}) {
        error = 0;
        EXPECT_FALSE(flushFolder(path(name), error)) << name;
        EXPECT_NE(error, 0) << name;
    }
    EXPECT_FALSE(flushFolder(u"", error));
}

TEST_F(FileEntriesTest, TheCanonicalPathIsTheShortestToTheSameEntry) {
    scratch.write("folder/file", "x");
    const std::u16string whole =
        *fromNativePath(testing_support::utf8OfPath(std::filesystem::canonical(scratch.path())));
    EXPECT_EQ(canonicalPath(path("folder/../folder/./file")), whole + u"\\folder\\file");
    EXPECT_EQ(canonicalPath(path("folder")), whole + u"\\folder");
    EXPECT_FALSE(canonicalPath(path("missing")));
    EXPECT_FALSE(canonicalPath(u""));
}

TEST_F(FileEntriesTest, WhatIsntThereHasNoStatus) {
    EXPECT_FALSE(fileStatus(path("missing"), error));
    EXPECT_NE(error, 0);
    EXPECT_FALSE(fileStatus(u"", error));
    EXPECT_FALSE(deleteFile(path("missing"), error));
    EXPECT_NE(error, 0);
    EXPECT_FALSE(moveEntry(path("missing"), path("other"), error));
    EXPECT_NE(error, 0);
    EXPECT_FALSE(readLink(path("missing")));
}

TEST_F(FileEntriesTest, TheStatusTellsWhatIsHidden) {
    testing_support::setHidden(scratch.write("folder.d/.hidden", "12"));
    scratch.write(".folder/shown.txt", "123");
    const auto hidden = fileStatus(path("folder.d/.hidden"), error);
    ASSERT_TRUE(hidden);
    EXPECT_TRUE(hidden->isHidden);
    EXPECT_EQ(hidden->size, 2);
    const auto shown = fileStatus(path(".folder/shown.txt"), error);
    ASSERT_TRUE(shown);
    EXPECT_FALSE(shown->isHidden);
    EXPECT_EQ(shown->size, 3);
}

TEST_F(FileEntriesTest, AFileMovesAndReplacesNothing) {
    scratch.write("a", "a");
    scratch.write("b", "b");
    EXPECT_FALSE(moveEntry(path("a"), path("b"), error));
    EXPECT_NE(error, 0);
    EXPECT_TRUE(moveEntry(path("a"), path("c"), error));
    EXPECT_EQ(error, 0);
    EXPECT_EQ(scratch.read("b"), "b");
    EXPECT_EQ(scratch.read("c"), "a");
}

TEST_F(FileEntriesTest, ALinkSaysItsTarget) {
    scratch.write("target", "x");
    EXPECT_TRUE(createLink(path("a.lnk"), path("target"), error));
    EXPECT_EQ(readLink(path("a.lnk")), path("target"));
    EXPECT_FALSE(createLink(path("a.lnk"), path("target"), error)) << "the name is taken";
    EXPECT_NE(error, 0);
    EXPECT_FALSE(readLink(path("target")));
}

} // namespace
} // namespace tessera::platform
