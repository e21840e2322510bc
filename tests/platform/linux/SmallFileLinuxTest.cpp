#include "platform/SmallFile.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tessera::test {
namespace {

TEST(SmallFileLinux, APipeIsNoFileAndHoldsNobodyUp) {
    const testing_support::ScratchFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(platform::readSmallFile(folder / "pipe", 100), std::nullopt) << "and doesn't wait for a writer";
    EXPECT_FALSE(platform::writeSmallFile(folder / "pipe", "x"));
}

} // namespace
} // namespace tessera::test
