#include "platform/Files.h"

#include "platform/NativePath.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <sys/stat.h>

namespace tessera::platform {
namespace {

class FilesLinuxTest : public testing::Test {
protected:
    std::u16string path(const std::string& name) const { return *fromNativePath((scratch / name).string()); }
    File openForReading(const std::string& name) {
        return File::open(path(name), {.read = true}, FileDisposition::openExisting, error);
    }

    testing_support::ScratchFolder scratch;
    std::int32_t error = -7;
};

TEST_F(FilesLinuxTest, PipeInAFolderHoldsNobodyUp) {
    ASSERT_EQ(mkfifo((scratch / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(openForReading("pipe").isOpen());
    EXPECT_EQ(error, EINVAL);
}

TEST_F(FilesLinuxTest, DevicesAreReadLikeFiles) {
    File zeros = File::open(u"\\dev\\zero", {.read = true}, FileDisposition::openExisting, error);
    ASSERT_TRUE(zeros.isOpen());
    char text[4] = {'x', 'x', 'x', 'x'};
    EXPECT_EQ(zeros.read(text, 4, error), 4);
    EXPECT_EQ(text[3], '\0');
    File full = File::open(u"\\dev\\full", {.write = true}, FileDisposition::openExisting, error);
    EXPECT_EQ(full.write("x", 1, error), -1);
    EXPECT_EQ(error, ENOSPC);
}

TEST_F(FilesLinuxTest, DeleteOnCloseTakesTheNameAtOnce) {
    const FileOpenFlags flags = {.read = true, .write = true, .deleteOnClose = true};
    File file = File::open(path("a"), flags, FileDisposition::createAlways, error);
    EXPECT_EQ(fileKindOf(path("a")), FileKind::missing);
    EXPECT_EQ(file.write("x", 1, error), 1);
}

TEST_F(FilesLinuxTest, ALinkIsOfTheKindOfItsTarget) {
    std::filesystem::create_directory(scratch / "folder");
    std::filesystem::create_symlink("folder", scratch / "link");
    EXPECT_EQ(fileKindOf(path("link")), FileKind::folder);
}

} // namespace
} // namespace tessera::platform
