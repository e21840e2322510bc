#include "platform/TemporaryFolder.h"

#include "support/ScopedEnvironment.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

using testing_support::ScopedEnvironment;

TEST(TemporaryFolderWindows, HasSlashesAndNoneAtItsEndButForADrive) {
    const ScopedEnvironment environment("TMP", "C:\\some\\folder\\");
    EXPECT_EQ(platform::temporaryFolder(), "C:/some/folder");
    const ScopedEnvironment drive("TMP", "C:\\");
    EXPECT_EQ(platform::temporaryFolder(), "C:/");
}

} // namespace
} // namespace tessera::test
