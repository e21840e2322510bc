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

constexpr std::uint32_t kSoon = 50;
constexpr std::uint32_t kLong = 20'000;

class NamedEventTest : public testing::Test {
protected:
    NamedEventTest() {
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

TEST_F(NamedEventTest, StartsUnset) {
    NamedEvent event = open();
    ASSERT_TRUE(event.isOpen());
    EXPECT_EQ(event.wait(0), WaitResult::timedOut);
    EXPECT_EQ(event.wait(kSoon), WaitResult::timedOut);
}

TEST_F(NamedEventTest, SignalBeforeAnyWaitLetsOneWaitThrough) {
    NamedEvent event = open();
    EXPECT_TRUE(event.signal());
    EXPECT_EQ(event.wait(kNoTimeLimit), WaitResult::signalled);
    EXPECT_EQ(event.wait(kSoon), WaitResult::timedOut);
}

TEST_F(NamedEventTest, TwoSignalsBeforeAWaitAreOne) {
    NamedEvent event = open();
    event.signal();
    event.signal();
    EXPECT_EQ(event.wait(0), WaitResult::signalled);
    EXPECT_EQ(event.wait(0), WaitResult::timedOut);
}

TEST_F(NamedEventTest, ThatIsNotOpenFailsInEveryOperation) {
    NamedEvent event;
    EXPECT_FALSE(event.isOpen());
    EXPECT_FALSE(event.signal());
    EXPECT_EQ(event.wait(kNoTimeLimit), WaitResult::failed);
}

TEST_F(NamedEventTest, IsAFileOfFourBytesThatHoldsTheState) {
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

TEST_F(NamedEventTest, IsPrivateToTheUser) {
    NamedEvent event = open();
    EXPECT_EQ(std::filesystem::status(file()).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST_F(NamedEventTest, SignalOfAnotherProcessEndsAWait) {
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

TEST_F(NamedEventTest, WaitOfAnotherProcessEndsAtASignalAndNotBefore) {
    HelperProcess helper(NAMED_EVENT_HELPER);
    ASSERT_TRUE(helperOpens(helper));
    NamedEvent event = open();
    ASSERT_TRUE(fallsAsleep(helper));
    EXPECT_EQ(helper.hear(std::chrono::milliseconds(100)), "(nothing)");
    event.signal();
    EXPECT_EQ(helper.hear(), "woken");
    EXPECT_EQ(word(), 0u);
}

TEST_F(NamedEventTest, SignalStaysSetForALaterOpenerWhileItIsHeld) {
    NamedEvent event = open();
    event.signal();
    HelperProcess helper(NAMED_EVENT_HELPER);
    ASSERT_TRUE(helperOpens(helper));
    EXPECT_EQ(helper.ask("wait"), "woken");
    EXPECT_EQ(event.wait(0), WaitResult::timedOut);
}

TEST_F(NamedEventTest, SignalOutlivesItsKilledSenderWhileSomebodyHoldsTheEvent) {
    NamedEvent event = open();
    HelperProcess helper(NAMED_EVENT_HELPER);
    ASSERT_TRUE(helperOpens(helper));
    ASSERT_EQ(helper.ask("signal"), "signalled");
    helper.kill();
    EXPECT_EQ(event.wait(0), WaitResult::signalled);
}

TEST_F(NamedEventTest, NoSignalSurvivesTheLastHolderWhenItIsKilled) {
    HelperProcess helper(NAMED_EVENT_HELPER);
    ASSERT_TRUE(helperOpens(helper));
    ASSERT_EQ(helper.ask("signal"), "signalled");
    helper.kill();
    ASSERT_EQ(word(), 1u) << "the test wants the trace of a crash";
    NamedEvent event = open();
    EXPECT_EQ(event.wait(0), WaitResult::timedOut);
    EXPECT_EQ(word(), 0u);
}

TEST_F(NamedEventTest, NoSignalSurvivesTheLastHolderThatCloses) {
    NamedEvent event = open();
    event.signal();
    event.close();
    EXPECT_FALSE(event.isOpen());
    EXPECT_EQ(open().wait(0), WaitResult::timedOut);
}

TEST_F(NamedEventTest, EachObjectOfOneProcessHoldsTheEventForItself) {
    NamedEvent first = open();
    {
        NamedEvent second = open();
        second.signal();
    }
    EXPECT_EQ(first.wait(0), WaitResult::signalled);
}

TEST_F(NamedEventTest, KilledSleeperTakesNoSignalWithIt) {
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

TEST_F(NamedEventTest, SignallerThatIsKilledBeforeItsWakeIsMadeGoodByTheNextSignal) {
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

TEST_F(NamedEventTest, WholeWordWrittenByAnotherProgramIsASignalAndSpoilsNoCount) {
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

TEST_F(NamedEventTest, OneSignalLetsOneOfTwoSleepersThrough) {
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

TEST_F(NamedEventTest, NoSignalIsLostBetweenTwoProcessesThatTakeTurns) {
    NamedEvent ping = open();
    NamedEvent pong = NamedEvent::open((name_ + ".pong").c_str(), NamedEvent::Reset::byWaiter);
    HelperProcess helper(NAMED_EVENT_HELPER);
    ASSERT_TRUE(helperOpens(helper));
    constexpr int kRounds = 3000;
    helper.say("echo " + name_ + ".pong " + std::to_string(kRounds));
    for (int i = 0; i < kRounds; ++i) {
        ping.signal();
        ASSERT_EQ(pong.wait(kLong), WaitResult::signalled) << "round " << i;
    }
    EXPECT_EQ(helper.hear(), "echoed");
}

TEST_F(NamedEventTest, KeepsItsSignalWhileOthersOpenAndCloseIt) {
    NamedEvent event = open();
    event.signal();
    std::vector<std::thread> openers;
    for (int i = 0; i < 4; ++i) {
        openers.emplace_back([&] {
            for (int round = 0; round < 200; ++round) {
                ASSERT_TRUE(open().isOpen());
            }
        });
    }
    for (std::thread& opener : openers) {
        opener.join();
    }
    EXPECT_EQ(event.wait(0), WaitResult::signalled);
}

TEST_F(NamedEventTest, FirstOpenersThatRaceAllGetTheSameEvent) {
    for (int round = 0; round < 50; ++round) {
        NamedEvent events[4];
        std::vector<std::thread> openers;
        for (NamedEvent& event : events) {
            openers.emplace_back([&] { event = open(); });
        }
        for (std::thread& opener : openers) {
            opener.join();
        }
        ASSERT_TRUE(events[0].signal());
        ASSERT_EQ(events[3].wait(0), WaitResult::signalled);
        for (NamedEvent& event : events) {
            ASSERT_EQ(event.wait(0), WaitResult::timedOut);
        }
    }
}

TEST_F(NamedEventTest, RefusesWhatIsNoFileName) {
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

TEST_F(NamedEventTest, WithoutANameIsReachedByNobodyElse) {
    NamedEvent first = NamedEvent::open(nullptr, NamedEvent::Reset::byWaiter);
    NamedEvent second = NamedEvent::open("", NamedEvent::Reset::byWaiter);
    ASSERT_TRUE(first.isOpen());
    ASSERT_TRUE(second.isOpen());
    first.signal();
    EXPECT_EQ(second.wait(0), WaitResult::timedOut);
    EXPECT_EQ(first.wait(0), WaitResult::signalled);
}

TEST_F(NamedEventTest, IsRefusedWhereTheFolderCannotBeMade) {
    const std::string blocked = std::string(std::getenv("TMPDIR")) + "/a file";
    std::ofstream(blocked) << "in the way";
    {
        const testing_support::ScopedEnvironment environment("TMPDIR", blocked);
        EXPECT_FALSE(open().isOpen());
    }
    EXPECT_TRUE(open().isOpen());
}

TEST_F(NamedEventTest, FollowsNoLinkAndOpensNoFolder) {
    open();
    std::filesystem::remove(file());
    std::filesystem::create_symlink("elsewhere", file());
    EXPECT_FALSE(open().isOpen());
    EXPECT_FALSE(std::filesystem::exists(file().parent_path() / "elsewhere"));
    std::filesystem::remove(file());
    std::filesystem::create_directory(file());
    EXPECT_FALSE(open().isOpen());
}

TEST_F(NamedEventTest, MovesWithItsHold) {
    NamedEvent first = open();
    first.signal();
    NamedEvent second = std::move(first);
    EXPECT_FALSE(first.isOpen());
    NamedEvent& itself = second;
    second = std::move(itself);
    EXPECT_EQ(open().wait(0), WaitResult::signalled);
    second = NamedEvent();
    EXPECT_EQ(open().wait(0), WaitResult::timedOut);
}

} // namespace
} // namespace tessera::platform
