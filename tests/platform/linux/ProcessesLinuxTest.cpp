#include "platform/Processes.h"

#include "support/Eventually.h"
#include "support/FinishedReport.h"
#include "support/HelperProcess.h"
#include "support/ProcessTable.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

namespace tessera::platform {
namespace {

using testing_support::eventually;
using testing_support::finishedReport;
using testing_support::hasVanished;
using testing_support::HelperProcess;
using testing_support::killByNumber;
using testing_support::ScratchFolder;

TEST(ProcessesLinux, QuotesInAnArgumentArrive) {
    const ScratchFolder scratch;
    Process::start(PROCESS_HELPER, {"report", scratch / "report", "with \"quotes\""});
    EXPECT_EQ(finishedReport(scratch, "report"), "argument=with \"quotes\"\nfiles=\nblocked=0\npipe ignored=0\n");
}

TEST(ProcessesLinux, ChildGetsNoOpenFileAndNoneOfTheCallersSignalSettings) {
    const int inherited = open("/dev/null", O_RDONLY);
    ASSERT_EQ(fcntl(inherited, F_GETFD), 0) << "a file that a program would inherit";
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    sigaddset(&blocked, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto pipe = std::signal(SIGPIPE, SIG_IGN);

    const ScratchFolder scratch;
    Process::start(PROCESS_HELPER, {"report", scratch / "report"});
    EXPECT_EQ(finishedReport(scratch, "report"), "files=\nblocked=0\npipe ignored=0\n");

    std::signal(SIGPIPE, pipe);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    close(inherited);
}

TEST(ProcessesLinux, NameWithoutAFolderIsSearchedFor) {
    EXPECT_TRUE(Process::start("true", {}));
}

TEST(ProcessesLinux, HostThatIgnoresItsChildrenIsNoTrouble) {
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    for (int i = 0; i < 20; ++i) {
        Process process = Process::start(PROCESS_HELPER, {"exit"});
        ASSERT_TRUE(process);
        EXPECT_TRUE(eventually([&] { return !process.isRunning(); }));
    }
    std::signal(SIGCHLD, before);
}

TEST(ProcessesLinux, HostThatReapsAllItsChildrenIsNoTrouble) {
    Process process = Process::start(PROCESS_HELPER, {"wait"});
    killByNumber(process.id());
    while (waitpid(-1, nullptr, 0) > 0) {
    }
    EXPECT_TRUE(eventually([&] { return !process.isRunning(); }));
    Process next = Process::start(PROCESS_HELPER, {"exit"});
    EXPECT_TRUE(eventually([&] { return hasVanished(next.id()); }));
}

TEST(ProcessesLinux, ManyChildrenLeaveNoDescriptorBehind) {
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

TEST(ProcessesLinux, BaseNameOfAProgramThatWasReplacedStaysWhatItWas) {
    const ScratchFolder scratch;
    const std::filesystem::path copy = scratch / "a program";
    std::filesystem::copy_file(PROCESS_HELPER, copy);
    HelperProcess helper(copy.string(), {"lines"});
    ASSERT_EQ(helper.hear(), std::to_string(helper.id()));
    const std::string name = copy.filename();
    EXPECT_EQ(processBaseName(helper.id()), name);
    std::filesystem::remove(copy);
    EXPECT_EQ(processBaseName(helper.id()), name);
}

} // namespace
} // namespace tessera::platform
