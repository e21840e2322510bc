#include "platform/NamedEvent.h"

#include "platform/Processes.h"
#include "support/HelperProcess.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace tessera::platform {
namespace {

using testing_support::HelperProcess;
using WaitResult = NamedEvent::WaitResult;

constexpr std::uint32_t kSoon = 50;
// What a process takes at most to fall asleep.
constexpr auto kAsleep = std::chrono::milliseconds(100);
constexpr std::uint32_t kLong = 20'000;

class NamedEventTest : public testing::Test {
protected:
    NamedEventTest() {
        static int counter = 0;
        name_ = "com.marlgrove.test." + std::to_string(ownProcessId()) + "." + std::to_string(++counter);
    }

    NamedEvent open() { return NamedEvent::open(name_.c_str(), NamedEvent::Reset::byWaiter); }
    bool helperOpens(HelperProcess& helper) { return helper.ask("open " + name_) == "open"; }

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

TEST_F(NamedEventTest, SignalOfAnotherProcessEndsAWait) {
    NamedEvent event = open();
    HelperProcess helper(NAMED_EVENT_HELPER);
    ASSERT_TRUE(helperOpens(helper));
    std::thread signaller([&] {
        std::this_thread::sleep_for(kAsleep);
        EXPECT_EQ(helper.ask("signal"), "signalled");
    });
    EXPECT_EQ(event.wait(kNoTimeLimit), WaitResult::signalled);
    EXPECT_EQ(event.wait(0), WaitResult::timedOut);
    signaller.join();
}

TEST_F(NamedEventTest, WaitOfAnotherProcessEndsAtASignalAndNotBefore) {
    HelperProcess helper(NAMED_EVENT_HELPER);
    ASSERT_TRUE(helperOpens(helper));
    NamedEvent event = open();
    helper.say("wait");
    EXPECT_EQ(helper.hear(kAsleep), "(nothing)");
    event.signal();
    EXPECT_EQ(helper.hear(), "woken");
    EXPECT_EQ(event.wait(0), WaitResult::timedOut);
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
    NamedEvent event = open();
    EXPECT_EQ(event.wait(0), WaitResult::timedOut);
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
    sleeper.say("wait");
    EXPECT_EQ(sleeper.hear(kAsleep), "(nothing)");
    sleeper.kill();
    EXPECT_TRUE(event.signal());
    EXPECT_EQ(event.wait(0), WaitResult::signalled);
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

TEST_F(NamedEventTest, WithoutANameIsReachedByNobodyElse) {
    NamedEvent first = NamedEvent::open(nullptr, NamedEvent::Reset::byWaiter);
    NamedEvent second = NamedEvent::open("", NamedEvent::Reset::byWaiter);
    ASSERT_TRUE(first.isOpen());
    ASSERT_TRUE(second.isOpen());
    first.signal();
    EXPECT_EQ(second.wait(0), WaitResult::timedOut);
    EXPECT_EQ(first.wait(0), WaitResult::signalled);
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
