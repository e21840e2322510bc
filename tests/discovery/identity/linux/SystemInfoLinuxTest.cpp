#include "discovery/identity/SystemInfo.h"

#include "support/ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

namespace tessera {
namespace {

TEST(SystemInfoLinux, TheUserNameIsTheOneOfTheEffectiveUserWhateverTheEnvironmentSays) {
    const testing_support::ScopedEnvironment user("USER", "somebody-else");
    const testing_support::ScopedEnvironment login("LOGNAME", "somebody-else");
    const passwd* entry = getpwuid(geteuid());
    EXPECT_EQ(platform::userName(), entry != nullptr ? entry->pw_name : "");
}

} // namespace
} // namespace tessera
