// What runs of programs, and locks on files, leave behind in this process.
#include "platform/InstanceLock.h"
#include "platform/ProgramRun.h"
#include "support/ScratchFolder.h"
#include "support/windows/OpenHandles.h"

#include <gtest/gtest.h>

#include <atomic>

namespace tessera::platform {
namespace {

using testing_support::expectNoHandleLeftBy;
using testing_support::ScratchFolder;
using testing_support::utf8OfPath;

TEST(ProgramRunWindows, NoKindOfEndLeavesAHandleBehind) {
    const ScratchFolder scratch;
    const std::atomic<bool> goOn{false};
    const std::atomic<bool> stop{true};
    expectNoHandleLeftBy([&] {
        EXPECT_EQ(runProgram(RUN_HELPER, {"exit", "3"}, goOn).kind, ProgramEnd::Kind::Exited);
        EXPECT_EQ(runProgram("C:\\nowhere\\at-all.exe", {}, goOn).kind, ProgramEnd::Kind::NotStarted);
        EXPECT_EQ(runProgram(RUN_HELPER, {"beat", utf8OfPath(scratch / "alive")}, stop).kind,
                  ProgramEnd::Kind::Stopped);
    });
}

TEST(InstanceLockWindows, NeitherHolderNorRefusedLeaveAHandleBehind) {
    const ScratchFolder scratch;
    const std::string path = utf8OfPath(scratch / "lock");
    expectNoHandleLeftBy([&] {
        const auto first = InstanceLock::tryAcquire(path);
        EXPECT_TRUE(first);
        EXPECT_FALSE(InstanceLock::tryAcquire(path));
        EXPECT_FALSE(InstanceLock::tryAcquire(utf8OfPath(scratch / "no folder" / "lock")));
    });
}

} // namespace
} // namespace tessera::platform
