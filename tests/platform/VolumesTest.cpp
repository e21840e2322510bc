#include "platform/Volumes.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace tessera::platform {
namespace {

TEST(Volumes, APathLiesOnAVolumeWhoseRootHoldsIt) {
    const testing_support::ScratchFolder scratch;
    const auto info = volumeInfo(testing_support::slashTextOf(scratch.path()));
    ASSERT_TRUE(info);
    ASSERT_FALSE(info->root.empty());
    const std::string whole = testing_support::slashTextOf(std::filesystem::canonical(scratch.path()));
    EXPECT_TRUE(whole.starts_with(info->root));
    const auto roots = volumeRoots();
    EXPECT_EQ(std::count(roots.begin(), roots.end(), info->root), 1);
    EXPECT_FALSE(info->fileSystem.empty());
    EXPECT_FALSE(info->name.empty());
    EXPECT_GT(info->totalBytes, 0u);
    EXPECT_LE(info->availableBytes, info->totalBytes);
    EXPECT_FALSE(info->readOnly);
}

TEST(Volumes, WhatIsntThereLiesOnNone) {
    EXPECT_FALSE(volumeInfo("/no/such/folder"));
}

} // namespace
} // namespace tessera::platform
