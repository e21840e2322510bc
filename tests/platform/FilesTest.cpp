#include "platform/Files.h"

#include "platform/NativePath.h"
#include "support/ErrorNumbers.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace tessera::platform {
namespace {

using testing_support::kErrorNumbers;

class FilesTest : public testing::Test {
protected:
    std::u16string path(const std::string& name) const {
        return *fromNativePath(testing_support::utf8OfPath(scratch / name));
    }

    File open(const std::string& name, const FileOpenFlags& flags, FileDisposition disposition) {
        return File::open(path(name), flags, disposition, error);
    }
    File create(const std::string& name) {
        return open(name, {.read = true, .write = true, .shareRead = true}, FileDisposition::createAlways);
    }
    File openForReading(const std::string& name) { return open(name, {.read = true}, FileDisposition::openExisting); }

    testing_support::ScratchFolder scratch;
    std::int32_t error = -7;
};

TEST_F(FilesTest, CreatesWritesReads) {
    File file = create("a");
    ASSERT_TRUE(file.isOpen());
    EXPECT_EQ(error, 0);
    EXPECT_EQ(file.write("abcdef", 6, error), 6);
    EXPECT_EQ(file.seek(2, FileSeek::fromStart, error), 2);
    char text[8] = {};
    EXPECT_EQ(file.read(text, 8, error), 4);
    EXPECT_STREQ(text, "cdef");
    EXPECT_EQ(file.read(text, 8, error), 0);
    EXPECT_EQ(file.seek(-1, FileSeek::fromEnd, error), 5);
    EXPECT_EQ(file.seek(-2, FileSeek::fromHere, error), 3);
    EXPECT_EQ(file.size(error), 6);
    EXPECT_EQ(error, 0);
    EXPECT_TRUE(file.flush(error));
    EXPECT_TRUE(file.close(error));
    EXPECT_FALSE(file.isOpen());
    EXPECT_EQ(scratch.read("a"), "abcdef");
}

TEST_F(FilesTest, CreateEmptiesWhatIsThere) {
    scratch.write("a", "old");
    EXPECT_TRUE(create("a").isOpen());
    EXPECT_EQ(scratch.read("a"), "");
}

TEST_F(FilesTest, OpenKeepsWhatIsThere) {
    scratch.write("a", "old");
    File file = open("a", {.read = true, .write = true, .shareRead = true}, FileDisposition::openExisting);
    EXPECT_EQ(file.write("N", 1, error), 1);
    EXPECT_EQ(scratch.read("a"), "Nld");
}

TEST_F(FilesTest, MissingFileIsNotOpened) {
    EXPECT_FALSE(openForReading("missing").isOpen());
    EXPECT_EQ(error, kErrorNumbers.missing);
    EXPECT_FALSE(create("no/such/folder").isOpen());
    EXPECT_EQ(error, kErrorNumbers.missingFolder);
    EXPECT_FALSE(File::open(u"", {.read = true}, FileDisposition::openExisting, error).isOpen());
    EXPECT_EQ(error, kErrorNumbers.missingFolder);
    EXPECT_FALSE(File::open({u"a\0b", 3}, {.read = true}, FileDisposition::openExisting, error).isOpen());
    EXPECT_NE(error, 0);
}

TEST_F(FilesTest, FolderIsNotOpened) {
    std::filesystem::create_directory(scratch / "folder");
    EXPECT_FALSE(openForReading("folder").isOpen());
    EXPECT_EQ(error, kErrorNumbers.aFolder);
}

TEST_F(FilesTest, ReadOnlyHandleRefusesToWrite) {
    scratch.write("a", "old");
    File file = openForReading("a");
    EXPECT_EQ(file.write("x", 1, error), -1);
    EXPECT_EQ(error, kErrorNumbers.wrongDirection);
    EXPECT_FALSE(file.truncate(0, error));
    EXPECT_NE(error, 0);
}

TEST_F(FilesTest, TruncateCutsAndExtends) {
    File file = create("a");
    file.write("abcdef", 6, error);
    EXPECT_TRUE(file.truncate(2, error));
    EXPECT_EQ(file.seek(0, FileSeek::fromHere, error), 6);
    EXPECT_TRUE(file.truncate(4, error));
    EXPECT_EQ(scratch.read("a"), std::string("ab\0\0", 4));
}

TEST_F(FilesTest, DeleteOnCloseLeavesNoName) {
    File file = open("a", {.read = true, .write = true, .deleteOnClose = true}, FileDisposition::createAlways);
    EXPECT_EQ(file.write("x", 1, error), 1);
    EXPECT_TRUE(file.close(error));
    EXPECT_EQ(fileKindOf(path("a")), FileKind::missing);
}

TEST_F(FilesTest, HandleMoves) {
    File a = create("a");
    File b = create("b");
    b = std::move(a);
    EXPECT_FALSE(a.isOpen());
    EXPECT_EQ(b.write("x", 1, error), 1);
    EXPECT_EQ(scratch.read("a"), "x");
    File c(std::move(b));
    EXPECT_FALSE(b.isOpen());
    EXPECT_TRUE(c.isOpen());
    EXPECT_TRUE(b.close(error));
}

TEST_F(FilesTest, TellsKinds) {
    scratch.write("a", "x");
    std::filesystem::create_directory(scratch / "folder");
    EXPECT_EQ(fileKindOf(path("a")), FileKind::file);
    EXPECT_EQ(fileKindOf(path("folder")), FileKind::folder);
    EXPECT_EQ(fileKindOf(path("folder/")), FileKind::folder);
    EXPECT_EQ(fileKindOf(path("none")), FileKind::missing);
    EXPECT_EQ(fileKindOf(u""), FileKind::missing);
}

TEST_F(FilesTest, SectorsAreKnownWhereThePathIs) {
    EXPECT_GE(sectorSizeOf(path(".")), 512u);
    EXPECT_EQ(sectorSizeOf(u""), 0u);
}

TEST_F(FilesTest, MakesTheFoldersThatAreMissing) {
    EXPECT_TRUE(createFolders(path("a/b/c"), error));
    EXPECT_EQ(error, 0);
    EXPECT_TRUE(std::filesystem::is_directory(scratch / "a/b/c"));
    EXPECT_TRUE(createFolders(path("a/b/c"), error));
    EXPECT_TRUE(createFolders(u"\\", error));
}

TEST_F(FilesTest, FileInTheWayIsAnError) {
    scratch.write("file", "x");
    EXPECT_FALSE(createFolders(path("file"), error));
    EXPECT_EQ(error, kErrorNumbers.notAFolder);
    EXPECT_FALSE(createFolders(path("file/b"), error));
    EXPECT_EQ(error, kErrorNumbers.fileOnTheWay);
    EXPECT_FALSE(createFolders(u"", error));
    EXPECT_EQ(error, kErrorNumbers.missingFolder);
}

} // namespace
} // namespace tessera::platform
