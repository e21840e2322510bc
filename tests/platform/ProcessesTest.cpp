#include "platform/Processes.h"

#include "platform/Threads.h"
#include "support/Eventually.h"
#include "support/HelperProcess.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace tessera::platform {
namespace {

using testing_support::eventually;
using testing_support::HelperProcess;

std::filesystem::path freshPath(const char* stem) {
    static int counter = 0;
    return std::filesystem::path(std::getenv("TMPDIR")) / (stem + std::to_string(++counter));
}

std::string readFile(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

// What is left of a process: no entry in the table, not even that of a zombie.
bool hasVanished(int id) {
    return ::kill(id, 0) == -1 && errno == ESRCH;
}

TEST(Processes, StartsAProgramWithItsArgumentsAsTheyAre) {
    const std::filesystem::path out = freshPath("report");
    Process process = Process::start(PROCESS_HELPER, {"report", out, "plain", "with blank", "with \"quotes\"", "",
                                                      "\xc3\xa4\xf0\x9f\x8e\xb5", "back\\slash", "$HOME *"});
    ASSERT_TRUE(process);
    EXPECT_GT(process.id(), 0);
    ASSERT_TRUE(eventually([&] { return std::filesystem::exists(out); }));
    EXPECT_EQ(readFile(out), "argument=plain\n"
                             "argument=with blank\n"
                             "argument=with \"quotes\"\n"
                             "argument=\n"
                             "argument=\xc3\xa4\xf0\x9f\x8e\xb5\n"
                             "argument=back\\slash\n"
                             "argument=$HOME *\n"
                             "files=\n"
                             "blocked=0\n"
                             "pipe ignored=0\n");
}

TEST(Processes, ChildGetsNoOpenFileAndNoneOfTheCallersSignalSettings) {
    const int inherited = open("/dev/null", O_RDONLY);
    ASSERT_EQ(fcntl(inherited, F_GETFD), 0) << "a file that a program would inherit";
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    sigaddset(&blocked, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto pipe = std::signal(SIGPIPE, SIG_IGN);

    const std::filesystem::path out = freshPath("report");
    Process::start(PROCESS_HELPER, {"report", out});
    EXPECT_TRUE(eventually([&] { return std::filesystem::exists(out); }));
    EXPECT_EQ(readFile(out), "files=\nblocked=0\npipe ignored=0\n");

    std::signal(SIGPIPE, pipe);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    close(inherited);
}

TEST(Processes, StartOfWhatIsNoProgramFails) {
    EXPECT_FALSE(Process::start("/nowhere/at-all", {}));
    EXPECT_FALSE(Process::start("no-program-of-this-name-anywhere", {}));
    EXPECT_FALSE(Process::start("", {}));
    const std::filesystem::path text = freshPath("not executable");
    std::ofstream(text) << "text";
    EXPECT_FALSE(Process::start(text, {}));
}

TEST(Processes, NameWithoutAFolderIsSearchedFor) {
    EXPECT_TRUE(Process::start("true", {}));
}

TEST(Processes, RunningIsToldUntilTheEnd) {
    Process process = Process::start(PROCESS_HELPER, {"wait"});
    ASSERT_TRUE(process);
    EXPECT_TRUE(process.isRunning());
    ::kill(process.id(), SIGKILL);
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
    EXPECT_EQ(::kill(id, 0), 0);
    ::kill(id, SIGKILL);
    EXPECT_TRUE(eventually([&] { return hasVanished(id); }));
}

TEST(Processes, ChildThatIsKeptLeavesNoZombieEither) {
    Process process = Process::start(PROCESS_HELPER, {"exit"});
    ASSERT_TRUE(process);
    EXPECT_TRUE(eventually([&] { return hasVanished(process.id()); }));
    EXPECT_FALSE(process.isRunning());
}

TEST(Processes, HostThatIgnoresItsChildrenIsNoTrouble) {
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    for (int i = 0; i < 20; ++i) {
        Process process = Process::start(PROCESS_HELPER, {"exit"});
        ASSERT_TRUE(process);
        EXPECT_TRUE(eventually([&] { return !process.isRunning(); }));
    }
    std::signal(SIGCHLD, before);
}

TEST(Processes, HostThatReapsAllItsChildrenIsNoTrouble) {
    Process process = Process::start(PROCESS_HELPER, {"wait"});
    ::kill(process.id(), SIGKILL);
    while (waitpid(-1, nullptr, 0) > 0) {
    }
    EXPECT_TRUE(eventually([&] { return !process.isRunning(); }));
    Process next = Process::start(PROCESS_HELPER, {"exit"});
    EXPECT_TRUE(eventually([&] { return hasVanished(next.id()); }));
}

TEST(Processes, ManyChildrenLeaveNoDescriptorBehind) {
    const auto countFiles = [] {
        const std::filesystem::directory_iterator files("/proc/self/fd");
        return std::distance(begin(files), end(files));
    };
    Process::start(PROCESS_HELPER, {"exit"});
    eventually([] { return waitpid(-1, nullptr, WNOHANG) == -1; });
    const auto before = countFiles();
    for (int i = 0; i < 20; ++i) {
        Process::start(PROCESS_HELPER, {"exit"});
    }
    EXPECT_TRUE(eventually([&] { return countFiles() <= before; }));
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
    EXPECT_FALSE(Process::open(id));
    EXPECT_FALSE(Process::open(0));
    EXPECT_FALSE(Process::open(-1));
    EXPECT_FALSE(Process::open(0x7fffffff));
}

TEST(Processes, BaseNameIsThatOfTheExecutable) {
    EXPECT_EQ(ownProcessId(), getpid());
    EXPECT_EQ(ownBaseName(), "platform_tests");
    EXPECT_EQ(processBaseName(getpid()), "platform_tests");
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    helper.hear();
    EXPECT_EQ(processBaseName(helper.id()), "process_helper");
}

TEST(Processes, BaseNameOfAProgramThatWasReplacedStaysWhatItWas) {
    const std::filesystem::path copy = freshPath("a program ");
    std::filesystem::copy_file(PROCESS_HELPER, copy);
    HelperProcess helper(copy.c_str(), {"lines"});
    ASSERT_EQ(helper.hear(), std::to_string(helper.id()));
    const std::string name = copy.filename();
    EXPECT_EQ(processBaseName(helper.id()), name);
    std::filesystem::remove(copy);
    EXPECT_EQ(processBaseName(helper.id()), name);
}

TEST(Processes, BaseNameOfNoProcessIsEmpty) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    const int id = helper.id();
    helper.kill();
    EXPECT_EQ(processBaseName(id), "");
    EXPECT_EQ(processBaseName(0), "");
    EXPECT_EQ(processBaseName(-1), "");
}

TEST(Processes, BaseNameOfAZombieIsEmpty) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    helper.hear();
    ::kill(helper.id(), SIGKILL);
    EXPECT_TRUE(eventually([&] { return processBaseName(helper.id()).empty(); }));
}

TEST(Processes, FindStopsAtTheFirstThatIsWanted) {
    HelperProcess helper(PROCESS_HELPER, {"lines"});
    helper.hear();
    int visited = 0;
    const int found = findProcess([&](int id, std::string_view name) {
        ++visited;
        return id == helper.id() && name == "process_helper";
    });
    EXPECT_EQ(found, helper.id());
    EXPECT_GE(visited, 1);
    EXPECT_EQ(findProcess([](int, std::string_view) { return false; }), -1);
    int calls = 0;
    findProcess([&](int, std::string_view) { return ++calls == 1; });
    EXPECT_EQ(calls, 1);
}

TEST(Processes, ThereIsNoWindowToShow) {
    Process process = Process::open(getpid());
    EXPECT_FALSE(process.showWindow());
}

} // namespace
} // namespace tessera::platform
