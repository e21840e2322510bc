#include "foundation/threads/FEvent.h"

#include "platform/NamedEvent.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <unistd.h>

namespace tessera {
namespace {

using platform::NamedEvent;

constexpr std::uint32_t kSoon = 30;
constexpr std::uint32_t kLong = 20'000;

class FEventTest : public testing::Test {
protected:
    FEventTest() {
        static int counter = 0;
        name_ = "com.marlgrove.event." + std::to_string(getpid()) + "." + std::to_string(++counter);
    }
    // The signalling side: whatever holds the same name.
    NamedEvent other() { return NamedEvent::open(name_.c_str(), NamedEvent::Reset::byWaiter); }

    std::string name_;
};

TEST_F(FEventTest, StartsWithoutASignal) {
    FEvent event(name_.c_str());
    EXPECT_FALSE(event.wait(0));
    EXPECT_FALSE(event.wait(kSoon));
}

TEST_F(FEventTest, EachSignalLetsOneWaitThrough) {
    FEvent event(name_.c_str());
    NamedEvent signaller = other();
    signaller.signal();
    EXPECT_TRUE(event.wait(0));
    EXPECT_FALSE(event.wait(0));
    signaller.signal();
    signaller.signal();
    EXPECT_TRUE(event.wait(kLong));
    EXPECT_FALSE(event.wait(kSoon));
}

TEST_F(FEventTest, SignalFromAnotherThreadEndsTheWait) {
    FEvent event(name_.c_str());
    std::thread signaller([&] { other().signal(); });
    EXPECT_TRUE(event.wait(platform::kNoTimeLimit));
    signaller.join();
}

TEST_F(FEventTest, TwoWaitersOfOneNameShareItsSignals) {
    FEvent first(name_.c_str());
    FEvent second(name_.c_str());
    other().signal();
    EXPECT_TRUE(second.wait(0));
    EXPECT_FALSE(first.wait(0));
}

TEST_F(FEventTest, FailedWaitCountsAsASignal) {
    // No system takes both separators in a name.
    FEvent event("no/such\\name");
    EXPECT_TRUE(event.wait(0));
    EXPECT_TRUE(event.wait(platform::kNoTimeLimit));
}

} // namespace
} // namespace tessera
