#include "platform/FileEntries.h"

#include "platform/NativePath.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace tessera::platform {
namespace {

TEST(FileEntries, AFolderThatIsThereIsFlushed) {
    const testing_support::ScratchFolder scratch;
    scratch.write("a", "text");
    std::int32_t error = -7;
    EXPECT_TRUE(flushFolder(*fromNativePath(scratch.path().string()), error));
    EXPECT_EQ(error, 0);
}

TEST(FileEntries, WhatIsNoFolderIsNotFlushed) {
    const testing_support::ScratchFolder scratch;
    scratch.write("a", "text");
    std::int32_t error = 0;
    EXPECT_FALSE(flushFolder(*fromNativePath((scratch / "a").string()), error));
    EXPECT_EQ(error, ENOTDIR);
    EXPECT_FALSE(flushFolder(*fromNativePath((scratch / "b").string()), error));
    EXPECT_EQ(error, ENOENT);
    EXPECT_FALSE(flushFolder(u"", error));
}

} // namespace
} // namespace tessera::platform
