#include "persistence/files/FNFileSystemFixture.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tessera {
namespace {

namespace fs = std::filesystem;

class FNFileSystemLinuxTest : public FNFileSystemTest {};

TEST_F(FNFileSystemLinuxTest, ALinkOfOursIsASymbolicOne) {
    scratch_.write("target.wav", "x");
    FNPath link = path("to target");
    EXPECT_TRUE(files_.createLink(link, path("target.wav")));
    EXPECT_TRUE(fs::is_symlink(scratch_ / "to target.lnk"));
    EXPECT_EQ(scratch_.read("to target.lnk"), "x");
}

TEST_F(FNFileSystemLinuxTest, ARelativeLinkIsResolvedInItsFolder) {
    scratch_.write("target", "x");
    fs::create_symlink("target", scratch_ / "relative.LNK");
    FNPath relative = path("relative.LNK");
    EXPECT_TRUE(files_.resolveLink(relative));
    EXPECT_TRUE(files_.isSameFile(relative, path("target")));
}

TEST_F(FNFileSystemLinuxTest, DisksHaveNoNumbersHere) {
    FString number("before");
    EXPECT_FALSE(files_.getDiskNumber(folder(""), number));
    EXPECT_EQ(utf8Of(number), "before");
}

TEST_F(FNFileSystemLinuxTest, TheSystemSendsNoVolumeMessagesHere) {
    EXPECT_FALSE(files_.setVolumeMessages(true));
    EXPECT_TRUE(files_.setVolumeMessages(false));
}

} // namespace
} // namespace tessera
