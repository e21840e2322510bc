#include "platform/Volumes.h"

#include "platform/VolumeWatch.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace tessera::platform {
namespace {

TEST(Volumes, APathLiesOnAVolumeWhoseRootHoldsIt) {
    const testing_support::ScratchFolder scratch;
    const auto info = volumeInfo(scratch.path().string());
    ASSERT_TRUE(info);
    ASSERT_FALSE(info->root.empty());
    const std::string whole = std::filesystem::canonical(scratch.path()).string();
    EXPECT_TRUE(whole.starts_with(info->root));
    EXPECT_FALSE(info->fileSystem.empty());
    EXPECT_GT(info->totalBytes, 0u);
    EXPECT_LE(info->availableBytes, info->totalBytes);
    EXPECT_FALSE(info->readOnly);
}

TEST(Volumes, ALinkCountsWhereItLeads) {
    const testing_support::ScratchFolder scratch;
    std::filesystem::create_directory_symlink("/proc", scratch / "link");
    const auto info = volumeInfo((scratch / "link").string());
    ASSERT_TRUE(info);
    EXPECT_EQ(info->root, "/proc");
    EXPECT_EQ(info->fileSystem, "proc");
    EXPECT_EQ(info->kind, VolumeKind::unknown);
}

TEST(Volumes, WhatIsntThereLiesOnNone) {
    EXPECT_FALSE(volumeInfo("/no/such/folder"));
}

TEST(Volumes, TheRootIsAmongTheRootsAndTheKernelsOwnArent) {
    const auto roots = volumeRoots();
    EXPECT_EQ(std::count(roots.begin(), roots.end(), "/"), 1);
    EXPECT_EQ(std::count(roots.begin(), roots.end(), "/proc"), 0);
}

TEST(VolumeWatch, SaysThatThereIsNone) {
    EXPECT_FALSE(startVolumeWatch([](VolumeChange, std::u16string_view) {}));
    stopVolumeWatch();
}

} // namespace
} // namespace tessera::platform
