#include "platform/NamedEvent.h"

#include "platform/Processes.h"
#include "support/HelperProcess.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <chrono>
#include <string>

namespace tessera::platform {
namespace {

using testing_support::HelperProcess;
using WaitResult = NamedEvent::WaitResult;

class NamedEventWindowsTest : public testing::Test {
protected:
    NamedEvent open(NamedEvent::Reset reset = NamedEvent::Reset::byWaiter) const {
        return NamedEvent::open(name_.c_str(), reset);
    }

    const std::string name_ = "com.marlgrove.test.windows." + std::to_string(ownProcessId());
};

TEST_F(NamedEventWindowsTest, IsTheSystemsOwnEventOfThatName) {
    NamedEvent event = open();
    HANDLE same = OpenEventA(EVENT_ALL_ACCESS, FALSE, name_.c_str());
    ASSERT_NE(same, nullptr);
    EXPECT_EQ(WaitForSingleObject(same, 0), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_TRUE(event.signal());
    EXPECT_EQ(WaitForSingleObject(same, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(same, 0), WAIT_OBJECT_0) << "a wait of the system's own doesn't clear it";
    EXPECT_EQ(event.wait(0), WaitResult::signalled);
    EXPECT_EQ(WaitForSingleObject(same, 0), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_TRUE(SetEvent(same));
    EXPECT_EQ(event.wait(0), WaitResult::signalled);
    CloseHandle(same);
}

TEST_F(NamedEventWindowsTest, ClearedByTheSystemIsOfTheOtherKind) {
    NamedEvent event = open(NamedEvent::Reset::bySystem);
    HANDLE same = OpenEventA(EVENT_ALL_ACCESS, FALSE, name_.c_str());
    event.signal();
    EXPECT_EQ(WaitForSingleObject(same, 0), WAIT_OBJECT_0);
    EXPECT_EQ(event.wait(0), WaitResult::timedOut);
    CloseHandle(same);
}

TEST_F(NamedEventWindowsTest, WhoeverMakesItSettlesItsKind) {
    NamedEvent maker = open(NamedEvent::Reset::byWaiter);
    NamedEvent later = open(NamedEvent::Reset::bySystem);
    maker.signal();
    EXPECT_EQ(later.wait(0), WaitResult::signalled);
    EXPECT_EQ(later.wait(0), WaitResult::signalled) << "nobody clears it for this one";
    EXPECT_EQ(maker.wait(0), WaitResult::signalled);
    EXPECT_EQ(later.wait(0), WaitResult::timedOut);
}

TEST_F(NamedEventWindowsTest, OneSignalWakesAtLeastOneOfTwoSleepers) {
    NamedEvent event = open();
    HelperProcess first(NAMED_EVENT_HELPER);
    HelperProcess second(NAMED_EVENT_HELPER);
    for (HelperProcess* helper : {&first, &second}) {
        ASSERT_EQ(helper->ask("open " + name_), "open");
        helper->say("wait");
        EXPECT_EQ(helper->hear(std::chrono::milliseconds(100)), "(nothing)");
    }
    event.signal();
    // The first that wakes clears it, and the other may have missed it.
    const bool firstWoke = first.hear(std::chrono::seconds(1)) == "woken";
    const bool secondWoke = second.hear(std::chrono::seconds(1)) == "woken";
    EXPECT_TRUE(firstWoke || secondWoke);
    EXPECT_EQ(event.wait(0), WaitResult::timedOut);
}

TEST_F(NamedEventWindowsTest, RefusesWhatTheSystemRefuses) {
    EXPECT_FALSE(NamedEvent::open("with\\backslash", NamedEvent::Reset::byWaiter).isOpen());
    EXPECT_FALSE(NamedEvent::open(std::string(300, 'n').c_str(), NamedEvent::Reset::byWaiter).isOpen());
    HANDLE other = CreateSemaphoreA(nullptr, 0, 1, name_.c_str());
    EXPECT_FALSE(open().isOpen()) << "the name of another kind of object";
    CloseHandle(other);
    EXPECT_TRUE(open().isOpen());
}

} // namespace
} // namespace tessera::platform
