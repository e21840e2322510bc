#include "platform/NamedEvent.h"

#include "support/Eventually.h"
#include "support/HelperProcess.h"
#include "support/ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <linux/futex.h>
#include <string>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace tessera::platform {
namespace {

using testing_support::eventually;
using testing_support::HelperProcess;
using WaitResult = NamedEvent::WaitResult;

class NamedEventLinuxTest : public testing::Test {
protected:
    NamedEventLinuxTest() {
        static int counter = 0;
        name_ = "com.marlgrove.test." + std::to_string(getpid()) + "." + std::to_string(++counter);
    }

    NamedEvent open() { return NamedEvent::open(name_.c_str(), NamedEvent::Reset::byWaiter); }
    std::filesystem::path file() const {
        return std::filesystem::path(std::getenv("TMPDIR")) / "Marlgrove" / "Events" / name_;
    }
    // The word as any other program would read it.
    std::uint32_t word() const {
        std::ifstream in(file(), std::ios::binary);
        std::uint32_t value = 0xdeadbeef;
        in.read(reinterpret_cast<char*>(&value), sizeof value);
        return value;
    }
    bool helperOpens(HelperProcess& helper) { return helper.ask("open " + name_) == "open"; }
    bool fallsAsleep(HelperProcess& helper, std::uint32_t sleepers = 1) {
        helper.say("wait");
        return eventually([&] { return word() == 2 * sleepers; });
    }

    std::string name_;
};

TEST_F(NamedEventLinuxTest, IsAFileOfFourBytesThatHoldsTheState) {
    NamedEvent event = open();
    EXPECT_EQ(std::filesystem::file_size(file()), 4u);
    EXPECT_EQ(word(), 0u);
    event.signal();
    EXPECT_EQ(word(), 1u);
    event.signal();
    EXPECT_EQ(word(), 1u);
    event.wait(0);
    EXPECT_EQ(word(), 0u);
}

TEST_F(NamedEventLinuxTest, IsPrivateToTheUser) {
    NamedEvent event = open();
    EXPECT_EQ(std::filesystem::status(file()).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST_F(NamedEventLinuxTest, SleepersAreCountedWhileTheySleep) {
    NamedEvent event = open();
    HelperProcess helper(NAMED_EVENT_HELPER);
    ASSERT_TRUE(helperOpens(helper));
    std::thread signaller([&] {
        EXPECT_TRUE(eventually([&] { return word() == 2; }));
        EXPECT_EQ(helper.ask("signal"), "signalled");
    });
    EXPECT_EQ(event.wait(kNoTimeLimit), WaitResult::signalled);
    signaller.join();
    EXPECT_EQ(word(), 0u);
}

TEST_F(NamedEventLinuxTest, NoSignalSurvivesTheLastHolderWhenItIsKilled) {
    HelperProcess helper(NAMED_EVENT_HELPER);
    ASSERT_TRUE(helperOpens(helper));
    ASSERT_EQ(helper.ask("signal"), "signalled");
    helper.kill();
    ASSERT_EQ(word(), 1u) << "the test wants the trace of a crash";
    NamedEvent event = open();
    EXPECT_EQ(event.wait(0), WaitResult::timedOut);
    EXPECT_EQ(word(), 0u);
}

TEST_F(NamedEventLinuxTest, KilledSleeperTakesNoSignalWithIt) {
    NamedEvent event = open();
    HelperProcess sleeper(NAMED_EVENT_HELPER);
    ASSERT_TRUE(helperOpens(sleeper));
    ASSERT_TRUE(fallsAsleep(sleeper));
    sleeper.kill();
    EXPECT_TRUE(event.signal());
    EXPECT_EQ(event.wait(0), WaitResult::signalled);

    HelperProcess next(NAMED_EVENT_HELPER);
    ASSERT_TRUE(helperOpens(next));
    ASSERT_TRUE(fallsAsleep(next, 2)) << "the dead one still counts";
    event.signal();
    EXPECT_EQ(next.hear(), "woken");
}

TEST_F(NamedEventLinuxTest, SignallerThatIsKilledBeforeItsWakeIsMadeGoodByTheNextSignal) {
    NamedEvent event = open();
    HelperProcess sleeper(NAMED_EVENT_HELPER);
    ASSERT_TRUE(helperOpens(sleeper));
    ASSERT_TRUE(fallsAsleep(sleeper));
    const int descriptor = ::open(file().c_str(), O_RDWR);
    void* memory = mmap(nullptr, 4, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    ASSERT_NE(memory, MAP_FAILED);
    std::atomic_ref(*static_cast<std::uint32_t*>(memory)).fetch_or(1);
    EXPECT_EQ(sleeper.hear(std::chrono::milliseconds(50)), "(nothing)");
    event.signal();
    EXPECT_EQ(sleeper.hear(), "woken");
    munmap(memory, 4);
    close(descriptor);
}

TEST_F(NamedEventLinuxTest, WholeWordWrittenByAnotherProgramIsASignalAndSpoilsNoCount) {
    NamedEvent event = open();
    HelperProcess sleeper(NAMED_EVENT_HELPER);
    ASSERT_TRUE(helperOpens(sleeper));
    ASSERT_TRUE(fallsAsleep(sleeper));
    const int descriptor = ::open(file().c_str(), O_RDWR);
    void* memory = mmap(nullptr, 4, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    ASSERT_NE(memory, MAP_FAILED);
    std::atomic_ref(*static_cast<std::uint32_t*>(memory)).store(1);
    syscall(SYS_futex, memory, FUTEX_WAKE, INT_MAX);
    EXPECT_EQ(sleeper.hear(), "woken");
    EXPECT_EQ(word(), 0u);
    munmap(memory, 4);
    close(descriptor);
}

TEST_F(NamedEventLinuxTest, OneSignalLetsOneOfTwoSleepersThrough) {
    NamedEvent event = open();
    HelperProcess first(NAMED_EVENT_HELPER);
    HelperProcess second(NAMED_EVENT_HELPER);
    ASSERT_TRUE(helperOpens(first));
    ASSERT_TRUE(helperOpens(second));
    ASSERT_TRUE(fallsAsleep(first));
    ASSERT_TRUE(fallsAsleep(second, 2));
    event.signal();
    ASSERT_TRUE(eventually([&] { return word() == 2; })) << "one is asleep again, nothing is set";
    event.signal();
    EXPECT_EQ(first.hear(), "woken");
    EXPECT_EQ(second.hear(), "woken");
}

TEST_F(NamedEventLinuxTest, RefusesWhatIsNoFileName) {
    const std::pair<const char*, std::string> names[] = {
        {"a separator", "com/marlgrove"},
        {"this folder", "."},
        {"the folder above", ".."},
        {"256 bytes", std::string(256, 'n')},
    };
    for (const auto& [what, name] : names) {
        EXPECT_FALSE(NamedEvent::open(name.c_str(), NamedEvent::Reset::byWaiter).isOpen()) << what;
    }
    EXPECT_TRUE(NamedEvent::open(std::string(255, 'n').c_str(), NamedEvent::Reset::byWaiter).isOpen());
}

TEST_F(NamedEventLinuxTest, IsRefusedWhereTheFolderCannotBeMade) {
    const std::string blocked = std::string(std::getenv("TMPDIR")) + "/a file";
    std::ofstream(blocked) << "in the way";
    {
        const testing_support::ScopedEnvironment environment("TMPDIR", blocked);
        EXPECT_FALSE(open().isOpen());
    }
    EXPECT_TRUE(open().isOpen());
}

TEST_F(NamedEventLinuxTest, FollowsNoLinkAndOpensNoFolder) {
    open();
    std::filesystem::remove(file());
    std::filesystem::create_symlink("elsewhere", file());
    EXPECT_FALSE(open().isOpen());
    EXPECT_FALSE(std::filesystem::exists(file().parent_path() / "elsewhere"));
    std::filesystem::remove(file());
    std::filesystem::create_directory(file());
    EXPECT_FALSE(open().isOpen());
}

} // namespace
} // namespace tessera::platform
