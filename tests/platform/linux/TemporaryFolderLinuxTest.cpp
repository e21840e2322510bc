#include "platform/TemporaryFolder.h"

#include "support/ScopedEnvironment.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

using testing_support::ScopedEnvironment;

TEST(TemporaryFolderLinux, HasNoSlashAtItsEnd) {
    const ScopedEnvironment environment("TMPDIR", "/some/folder///");
    EXPECT_EQ(platform::temporaryFolder(), "/some/folder");
    const ScopedEnvironment root("TMPDIR", "/");
    EXPECT_EQ(platform::temporaryFolder(), "/");
}

} // namespace
} // namespace tessera::test
