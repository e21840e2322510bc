#include "platform/TemporaryFolder.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tessera::test {
namespace {

TEST(TemporaryFolder, IsTheSystemsWithoutASlashAtItsEnd) {
    const std::string folder = platform::temporaryFolder();
    ASSERT_FALSE(folder.empty());
    EXPECT_NE(folder.back(), '/');
    EXPECT_EQ(folder.find('\\'), folder.npos);
    EXPECT_EQ(std::filesystem::canonical(testing_support::pathOfUtf8(folder)),
              std::filesystem::canonical(std::filesystem::temp_directory_path()));
}

} // namespace
} // namespace tessera::test
