#include "persistence/files/FFileSystem.h"

#include "persistence/files/PathSupport.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

struct SizeRow {
    const char* name;
    std::int64_t size;
    std::int32_t maxLevel;
    const char* expected;
};

class SizeTexts : public testing::TestWithParam<SizeRow> {};

TEST_P(SizeTexts, AreFormattedAsStated) {
    FString text;
    EXPECT_TRUE(formatByteCount(GetParam().size, text, GetParam().maxLevel));
    EXPECT_EQ(utf8Of(text), GetParam().expected);
}

const SizeRow kSizes[] = {
    {"OneByte", 1, 4, "0.001 Bytes"},
    {"TheLowestLevelIsDividedByAThousand", 512, 4, "0.512 Bytes"},
    {"AWholeKilobyteIsStillBytes", 1024, 4, "1.024 Bytes"},
    {"JustAboveAKilobyte", 1025, 4, "1.001 KB"},
    {"OneAndAHalfKilobytes", 1536, 4, "1.500 KB"},
    {"AMegabyteIsStillKilobytes", 1048576, 4, "1024.000 KB"},
    {"Megabytes", 1572864, 4, "1.500 MB"},
    {"Gigabytes", 3221225472, 4, "3.000 GB"},
    {"NoLevelAboveGigabytes", 5497558138880, 4, "5120.000 GB"},
    {"NoLevelAboveGigabytesWhateverIsAllowed", 5497558138880, 9, "5120.000 GB"},
    {"StopsAtTheLevelAsked", 3221225472, 2, "3145728.000 KB"},
    {"StopsAtBytes", 5000, 1, "5.000 Bytes"},
};

INSTANTIATE_TEST_SUITE_P(FFileSystem, SizeTexts, testing::ValuesIn(kSizes),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(FFileSystem, NothingHasNoSizeText) {
    FString text("before");
    EXPECT_FALSE(formatByteCount(0, text, 4));
    EXPECT_FALSE(formatByteCount(-1, text, 4));
    EXPECT_EQ(utf8Of(text), "before");
}

// What a file system that serves nothing answers.
class AnswersNothing : public FFileSystem {};

TEST(FFileSystem, AnswersEverythingWithNothing) {
    AnswersNothing files;
    FNPath path(FStringRef("\\there"), PathKind::file);
    FString text("x?");
    std::int64_t number = 7;
    EXPECT_EQ(files.createFile(path, 2, nullptr), nullptr);
    EXPECT_EQ(files.openFile(path, 1, nullptr), nullptr);
    EXPECT_FALSE(files.deleteFile(path));
    EXPECT_FALSE(files.fileExists(path));
    EXPECT_FALSE(files.rename(path, "y"));
    EXPECT_FALSE(files.move(path, path));
    EXPECT_FALSE(files.copyFile(path, path, nullptr));
    EXPECT_FALSE(files.createFolder(path));
    EXPECT_FALSE(files.getVolumeName(path, text));
    EXPECT_FALSE(files.deleteFolderContent(path, true));
    EXPECT_FALSE(files.getFileTimes(path, number, number));
    EXPECT_EQ(files.getFileSize(path), -1);
    EXPECT_FALSE(files.sanitizeName(text, 0, true));
    EXPECT_EQ(files.newIterator(path, false), nullptr);
    EXPECT_EQ(files.countFiles(path, true, true, &number), 0);
    EXPECT_FALSE(files.copyFolder(path, path, nullptr));
    EXPECT_FALSE(files.deleteFolder(path));
    EXPECT_FALSE(files.folderExists(path));
    EXPECT_FALSE(files.openUrl("https://example.org/"));
    EXPECT_FALSE(files.isAbsolute(path));
    EXPECT_FALSE(files.isRootPath("\\"));
    EXPECT_FALSE(files.sanitizePath(text, 0));
    EXPECT_FALSE(files.formatSize(path, text, 4));
    EXPECT_FALSE(files.revealInShell(path));
    EXPECT_FALSE(files.openDocument(path));
    EXPECT_FALSE(files.resolveLink(path));
    EXPECT_FALSE(files.createLink(path, path));
    EXPECT_EQ(files.getVolumeKind(path), VolumeKind::unknown);
    EXPECT_FALSE(files.getDiskNumber(path, text));
    EXPECT_EQ(files.getFreeSpace(path), -1);
    EXPECT_FALSE(files.isSameFile(path, path));
    EXPECT_FALSE(files.setVolumeMessages(true));
    EXPECT_EQ(number, 7);
    EXPECT_EQ(utf8Of(text), "x?");
}

} // namespace
} // namespace tessera
