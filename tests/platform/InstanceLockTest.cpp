#include "platform/InstanceLock.h"

#include "platform/ProgramRun.h"
#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

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

TEST(InstanceLock, AProcessThatCrashesLetsItGo) {
    const std::atomic<bool> never{false};
    const ProgramEnd end = runProgram(RUN_HELPER, {"hold", lockPath()}, never);
    EXPECT_EQ(ProgramEnd::Kind::Crashed, end.kind);
    EXPECT_TRUE(InstanceLock::tryAcquire(lockPath()));
}

TEST(InstanceLock, KeepsOtherProcessesOut) {
    const std::atomic<bool> never{false};
    {
        const auto held = InstanceLock::tryAcquire(lockPath());
        EXPECT_EQ(1, runProgram(RUN_HELPER, {"lock", lockPath()}, never).code);
    }
    EXPECT_EQ(0, runProgram(RUN_HELPER, {"lock", lockPath()}, never).code);
}

TEST(InstanceLock, AProgramThatIsStartedDoesNotInheritIt) {
    auto held = InstanceLock::tryAcquire(lockPath());
    ASSERT_TRUE(held);
    std::atomic<bool> stop{false};
    const std::string alive = (std::filesystem::temp_directory_path() / "alive").string();
    std::thread runner([&] { runProgram(RUN_HELPER, {"beat", alive}, stop); });
    EXPECT_TRUE(testing_support::eventually([&] { return std::filesystem::exists(alive); }));
    held.reset();
    EXPECT_TRUE(InstanceLock::tryAcquire(lockPath()));
    stop = true;
    runner.join();
}

TEST(InstanceLock, AFileThatCannotBeOpenedIsToldFromALockThatIsHeld) {
    std::error_code error;
    EXPECT_FALSE(InstanceLock::tryAcquire("/nowhere/at/all/instance.lock", error));
    EXPECT_TRUE(error);
    const auto held = InstanceLock::tryAcquire(lockPath(), error);
    EXPECT_TRUE(held);
    EXPECT_FALSE(error);
    error = std::make_error_code(std::errc::io_error);
    EXPECT_FALSE(InstanceLock::tryAcquire(lockPath(), error));
    EXPECT_FALSE(error) << error.message();
}

} // namespace
} // namespace tessera::platform
