#include "platform/InstanceLock.h"

#include "platform/ProgramRun.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tessera::platform {
namespace {

std::string lockPath() {
    return (std::filesystem::temp_directory_path() / "instance.lock").string();
}

TEST(InstanceLock, OneHolderAtATime) {
    auto first = InstanceLock::tryAcquire(lockPath());
    ASSERT_TRUE(first);
    EXPECT_FALSE(InstanceLock::tryAcquire(lockPath()));
    first.reset();
    EXPECT_TRUE(InstanceLock::tryAcquire(lockPath()));
}

TEST(InstanceLock, MovingItKeepsIt) {
    auto first = InstanceLock::tryAcquire(lockPath());
    ASSERT_TRUE(first);
    const InstanceLock second = std::move(*first);
    first.reset();
    EXPECT_FALSE(InstanceLock::tryAcquire(lockPath()));
}

TEST(InstanceLock, AProcessThatEndsLetsItGo) {
    const std::atomic<bool> never{false};
    const ProgramEnd end = runProgram("flock", {"-n", lockPath(), "sh", "-c", "kill -KILL $PPID $$"}, never);
    EXPECT_NE(ProgramEnd::Kind::NotStarted, end.kind);
    EXPECT_TRUE(InstanceLock::tryAcquire(lockPath()));
}

TEST(InstanceLock, AProgramThatIsStartedDoesNotInheritIt) {
    const std::atomic<bool> never{false};
    const auto held = InstanceLock::tryAcquire(lockPath());
    EXPECT_EQ(1, runProgram("flock", {"-n", lockPath(), "true"}, never).code);
}

TEST(InstanceLock, AFolderThatIsMissingGivesNothing) {
    EXPECT_FALSE(InstanceLock::tryAcquire("/nowhere/at/all/instance.lock"));
}

} // namespace
} // namespace tessera::platform
