#include "platform/SmallFile.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <thread>

namespace tessera::test {
namespace {

using testing_support::ScratchFolder;

std::string textOf(const std::filesystem::path& path) {
    return testing_support::slashTextOf(path);
}

TEST(SmallFile, WritesANewFile) {
    const ScratchFolder folder;
    EXPECT_TRUE(platform::writeSmallFile(textOf(folder / "file"), "content\n"));
    EXPECT_EQ(folder.read("file"), "content\n");
    EXPECT_EQ(folder.entryCount(), 1u) << "nothing else is left in the folder";
}

TEST(SmallFile, ReplacesALongerContent) {
    const ScratchFolder folder;
    folder.write("file", "a much longer content");
    EXPECT_TRUE(platform::writeSmallFile(textOf(folder / "file"), "short"));
    EXPECT_EQ(folder.read("file"), "short");
    EXPECT_TRUE(platform::writeSmallFile(textOf(folder / "file"), ""));
    EXPECT_EQ(folder.read("file"), "");
}

TEST(SmallFile, CantWriteWhereNoFileCanBe) {
    const ScratchFolder folder;
    EXPECT_FALSE(platform::writeSmallFile(textOf(folder / "absent/file"), "x"));
    EXPECT_FALSE(platform::writeSmallFile(textOf(folder.path()), "x"));
}

TEST(SmallFile, ReadsUpToTheLimit) {
    const ScratchFolder folder;
    const std::string text(10000, 'x');
    folder.write("file", text);
    EXPECT_EQ(platform::readSmallFile(textOf(folder / "file"), 20000), text);
    EXPECT_EQ(platform::readSmallFile(textOf(folder / "file"), 10000), text);
    EXPECT_EQ(platform::readSmallFile(textOf(folder / "file"), 5000), text.substr(0, 5000));
    EXPECT_EQ(platform::readSmallFile(textOf(folder / "file"), 0), "");
}

TEST(SmallFile, ReadsPlainFilesAlone) {
    const ScratchFolder folder;
    EXPECT_EQ(platform::readSmallFile(textOf(folder.path()), 100), std::nullopt);
    EXPECT_EQ(platform::readSmallFile(textOf(folder / "absent"), 100), std::nullopt);
}

TEST(SmallFile, NamesMayHoldAnyCharacters) {
    const ScratchFolder folder;
    const std::string name = "\xCE\xA9 \xE9\x9F\xB3 \xF0\x9F\x8E\xB5";
    EXPECT_TRUE(platform::writeSmallFile(textOf(folder / name), "x"));
    EXPECT_EQ(folder.read(name), "x");
    EXPECT_EQ(platform::readSmallFile(textOf(folder / name), 100), "x");
}

// The file comes and goes; whoever finds it finds it whole.
TEST(SmallFile, AReaderNeverMeetsAnEmptyFile) {
    const ScratchFolder folder;
    const std::string path = textOf(folder / "file");
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
        // Some systems refuse it while the reader is at it.
        std::error_code ignored;
        std::filesystem::remove(folder / "file", ignored);
    }
    stop = true;
    reader.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace tessera::test
