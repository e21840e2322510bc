#include "platform/SmallFile.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <sys/stat.h>
#include <thread>

namespace tessera::test {
namespace {

using testing_support::ScratchFolder;

TEST(SmallFile, WritesANewFile) {
    const ScratchFolder folder;
    EXPECT_TRUE(platform::writeSmallFile(folder / "file", "content\n"));
    EXPECT_EQ(folder.read("file"), "content\n");
    EXPECT_EQ(folder.entryCount(), 1u) << "nothing else is left in the folder";
}

TEST(SmallFile, ReplacesALongerContent) {
    const ScratchFolder folder;
    folder.write("file", "a much longer content");
    EXPECT_TRUE(platform::writeSmallFile(folder / "file", "short"));
    EXPECT_EQ(folder.read("file"), "short");
    EXPECT_TRUE(platform::writeSmallFile(folder / "file", ""));
    EXPECT_EQ(folder.read("file"), "");
}

TEST(SmallFile, CantWriteWhereNoFileCanBe) {
    const ScratchFolder folder;
    EXPECT_FALSE(platform::writeSmallFile(folder / "absent/file", "x"));
    EXPECT_FALSE(platform::writeSmallFile(folder.path(), "x"));
}

TEST(SmallFile, ReadsUpToTheLimit) {
    const ScratchFolder folder;
    const std::string text(10000, 'x');
    folder.write("file", text);
    EXPECT_EQ(platform::readSmallFile(folder / "file", 20000), text);
    EXPECT_EQ(platform::readSmallFile(folder / "file", 10000), text);
    EXPECT_EQ(platform::readSmallFile(folder / "file", 5000), text.substr(0, 5000));
    EXPECT_EQ(platform::readSmallFile(folder / "file", 0), "");
}

TEST(SmallFile, ReadsPlainFilesAlone) {
    const ScratchFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(platform::readSmallFile(folder / "pipe", 100), std::nullopt) << "and doesn't wait for a writer";
    EXPECT_FALSE(platform::writeSmallFile(folder / "pipe", "x"));
    EXPECT_EQ(platform::readSmallFile(folder.path(), 100), std::nullopt);
    EXPECT_EQ(platform::readSmallFile(folder / "absent", 100), std::nullopt);
}

// The file comes and goes; whoever finds it finds it whole.
TEST(SmallFile, AReaderNeverMeetsAnEmptyFile) {
    const ScratchFolder folder;
    const std::string path = folder / "file";
    const std::string text = "process\n123456\ntype\n";
    std::atomic<bool> stop = false;
    std::atomic<int> wrong = 0;
    std::thread reader([&] {
        while (!stop) {
            if (const auto found = platform::readSmallFile(path, 1000); found && *found != text) {
                ++wrong;
            }
        }
    });
    for (int round = 0; round < 2000; ++round) {
        EXPECT_TRUE(platform::writeSmallFile(path, text));
        EXPECT_TRUE(platform::writeSmallFile(path, text));
        std::filesystem::remove(path);
    }
    stop = true;
    reader.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace tessera::test
