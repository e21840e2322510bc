#include "platform/Volumes.h"

#include "platform/VolumeWatch.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace tessera::platform {
namespace {

TEST(VolumesLinux, ALinkCountsWhereItLeads) {
    const testing_support::ScratchFolder scratch;
    std::filesystem::create_directory_symlink("/proc", scratch / "link");
    const auto info = volumeInfo((scratch / "link").string());
    ASSERT_TRUE(info);
    EXPECT_EQ(info->root, "/proc");
    EXPECT_EQ(info->fileSystem, "proc");
    EXPECT_EQ(info->kind, VolumeKind::unknown);
}

TEST(VolumesLinux, TheRootIsAmongTheRootsAndTheKernelsOwnArent) {
    const auto roots = volumeRoots();
    EXPECT_EQ(std::count(roots.begin(), roots.end(), "/"), 1);
    EXPECT_EQ(std::count(roots.begin(), roots.end(), "/proc"), 0);
}

TEST(VolumeWatchLinux, SaysThatThereIsNone) {
    EXPECT_FALSE(startVolumeWatch([](VolumeChange, std::u16string_view) {}));
    stopVolumeWatch();
}

} // namespace
} // namespace tessera::platform
