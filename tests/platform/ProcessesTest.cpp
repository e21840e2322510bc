#include "platform/Processes.h"

#include "platform/Threads.h"
#include "support/Eventually.h"
#include "support/FinishedReport.h"
#include "support/HelperProcess.h"
#include "support/ProcessTable.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tessera::platform {
namespace {

using testing_support::eventually;
using testing_support::finishedReport;
using testing_support::hasVanished;
using testing_support::HelperProcess;
using testing_support::isForgotten;
using testing_support::killByNumber;
using testing_support::ScratchFolder;

// As the system spells it, the extension included.
const std::string kHelperName = std::filesystem::path(PROCESS_HELPER).filename().string();

TEST(Processes, StartsAProgramWithItsArgumentsAsTheyAre) {
    const ScratchFolder scratch;
    const std::string out = (scratch / "report").string();
    Process process = Process::start(PROCESS_HELPER, {"report", out, "plain", "with blank", "",
                                                      "\xc3\xa4\xf0\x9f\x8e\xb5", "back\\slash", "$HOME *"});
    ASSERT_TRUE(process);
    EXPECT_GT(process.id(), 0);
    const std::string report = finishedReport(scratch, "report");
    EXPECT_TRUE(report.starts_with("argument=plain\n"
                                   "argument=with blank\n"
                                   "argument=\n"
                                   "argument=\xc3\xa4\xf0\x9f\x8e\xb5\n"
                                   "argument=back\\slash\n"
                                   "argument=$HOME *\n"))
        << report;
}

TEST(Processes, StartOfWhatIsNoProgramFails) {
    EXPECT_FALSE(Process::start("/nowhere/at-all", {}));
    EXPECT_FALSE(Process::start("no-program-of-this-name-anywhere", {}));
    EXPECT_FALSE(Process::start("", {}));
    const ScratchFolder scratch;
    EXPECT_FALSE(Process::start(scratch.write("not executable", "text").string(), {}));
}

TEST(Processes, RunningIsToldUntilTheEnd) {
    Process process = Process::start(PROCESS_HELPER, {"wait"});
    ASSERT_TRUE(process);
    EXPECT_TRUE(process.isRunning());
    killByNumber(process.id());
    EXPECT_TRUE(eventually([&] { return !process.isRunning(); }));
    EXPECT_TRUE(process) << "it stays known until it's let go";
}

TEST(Processes, KillEndsTheProcessAndLetsItGo) {
    Process process = Process::start(PROCESS_HELPER, {"wait"});
    const int id = process.id();
    process.kill();
    EXPECT_FALSE(process);
    EXPECT_FALSE(process.isRunning());
    EXPECT_TRUE(eventually([&] { return hasVanished(id); }));
    process.kill();
}

TEST(Processes, ChildThatIsNotKeptOutlivesTheObjectAndLeavesNoZombie) {
    int id = 0;
    {
        Process process = Process::start(PROCESS_HELPER, {"wait"});
        id = process.id();
    }
    EXPECT_FALSE(hasVanished(id));
    killByNumber(id);
    EXPECT_TRUE(eventually([&] { return hasVanished(id); }));
}

TEST(Processes, ChildThatIsKeptLeavesNoZombieEither) {
    Process process = Process::start(PROCESS_HELPER, {"exit"});
    ASSERT_TRUE(process);
    EXPECT_TRUE(eventually([&] { return hasVanished(process.id()); }));
    EXPECT_FALSE(process.isRunning());
}

TEST(Processes, ForeignProcessIsOpenedByItsNumber) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    ASSERT_EQ(helper.hear(), std::to_string(helper.id()));
    Process process = Process::open(helper.id());
    ASSERT_TRUE(process);
    EXPECT_EQ(process.id(), helper.id());
    EXPECT_TRUE(process.isRunning());
    helper.kill();
    EXPECT_FALSE(process.isRunning());
}

TEST(Processes, OpenFailsWithoutAProcess) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    const int id = helper.id();
    helper.kill();
    ASSERT_TRUE(eventually([&] { return isForgotten(id); }));
    EXPECT_FALSE(Process::open(id));
    EXPECT_FALSE(Process::open(0));
    EXPECT_FALSE(Process::open(-1));
    EXPECT_FALSE(Process::open(0x7fffffff));
}

TEST(Processes, BaseNameIsThatOfTheExecutable) {
    EXPECT_EQ(ownBaseName(), OWN_NAME);
    EXPECT_EQ(processBaseName(ownProcessId()), OWN_NAME);
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    helper.hear();
    EXPECT_EQ(processBaseName(helper.id()), kHelperName);
}

TEST(Processes, BaseNameOfNoProcessIsEmpty) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    const int id = helper.id();
    helper.kill();
    EXPECT_EQ(processBaseName(id), "");
    EXPECT_EQ(processBaseName(0), "");
    EXPECT_EQ(processBaseName(-1), "");
}

TEST(Processes, BaseNameOfADeadProcessThatIsStillInTheTableIsEmpty) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    helper.hear();
    helper.killAndKeep();
    EXPECT_TRUE(eventually([&] { return processBaseName(helper.id()).empty(); }));
}

TEST(Processes, FindStopsAtTheFirstThatIsWanted) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    helper.hear();
    int visited = 0;
    const int found = findProcess([&](int id, std::string_view name) {
        ++visited;
        return id == helper.id() && name == kHelperName;
    });
    EXPECT_EQ(found, helper.id());
    EXPECT_GE(visited, 1);
    EXPECT_EQ(findProcess([](int, std::string_view) { return false; }), -1);
    int calls = 0;
    findProcess([&](int, std::string_view) { return ++calls == 1; });
    EXPECT_EQ(calls, 1);
}

TEST(Processes, ThereIsNoWindowToShow) {
    Process process = Process::open(ownProcessId());
    EXPECT_FALSE(process.showWindow());
}

} // namespace
} // namespace tessera::platform
