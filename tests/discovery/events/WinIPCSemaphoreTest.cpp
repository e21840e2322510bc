#include "discovery/events/WinIPCSemaphore.h"

#include "foundation/object/ClassFactory.h"
#include "foundation/object/FMetaClass.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/threads/FEvent.h"
#include "platform/Processes.h"
#include "platform/Semaphore.h"
#include "support/HelperProcess.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace tessera {
namespace {

using testing_support::HelperProcess;

constexpr std::uint32_t kSoon = 50;
constexpr std::uint32_t kLong = 20'000;

class WinIPCSemaphoreTest : public testing::Test {
protected:
    WinIPCSemaphoreTest() {
        static int counter = 0;
        name_ = "com.marlgrove.semaphore." + std::to_string(platform::ownProcessId()) + "." + std::to_string(++counter);
    }

    static FRefPtr<IIPCSemaphore> make() {
        return FRefPtr<IIPCSemaphore>::adopt(
            static_cast<IIPCSemaphore*>(ClassFactory::getInstance(true)->createInstance(IIPCSemaphore::iid)));
    }
    FRefPtr<IIPCSemaphore> makeNamed() {
        FRefPtr<IIPCSemaphore> semaphore = make();
        EXPECT_EQ(semaphore->create(name_.c_str()), 0);
        return semaphore;
    }
    // Whether a signal is there, by something that can ask without blocking.
    bool isSet() { return FEvent(name_.c_str()).wait(0); }

    std::string name_;
};

// A wait without limit, on a thread of its own.
class Waiter {
public:
    explicit Waiter(IIPCSemaphore& semaphore)
        : thread_([this, &semaphore] {
              result_ = semaphore.wait();
              over_.release(1);
          }) {}
    ~Waiter() { thread_.join(); }

    bool isBlocked() { return !over_.wait(kSoon); }
    bool comesBackTrue() { return over_.wait(kLong) && result_; }

private:
    bool result_ = false;
    platform::Semaphore over_{0};
    std::thread thread_;
};

TEST_F(WinIPCSemaphoreTest, IsMadeByTheClassRegistryFromItsIdentifierAndItsName) {
    EXPECT_TRUE(make());
    const auto byName = FRefPtr<IIPCSemaphore>::adopt(
        static_cast<IIPCSemaphore*>(ClassFactory::getInstance(true)->createInstance("WinIPCSemaphore")));
    ASSERT_TRUE(byName);
    EXPECT_EQ(byName->create(name_.c_str()), 0);
}

TEST_F(WinIPCSemaphoreTest, AnswersItsInterfaceAndThoseOfFObject) {
    const FRefPtr<IIPCSemaphore> semaphore = make();
    const FRefPtr<IIPCSemaphore> same = queryFor<IIPCSemaphore>(semaphore.get());
    EXPECT_EQ(same, semaphore);
    const FRefPtr<IUpdateTarget> target = queryFor<IUpdateTarget>(semaphore.get());
    EXPECT_TRUE(target);
    void* out = nullptr;
    EXPECT_EQ(semaphore->queryInterface("{00000000-0000-0000-0000-000000000001}"_uid, &out), kNoInterface);
    EXPECT_EQ(out, nullptr);
}

TEST_F(WinIPCSemaphoreTest, KnowsItsClass) {
    const auto semaphore = FRefPtr<WinIPCSemaphore>::adopt(new WinIPCSemaphore);
    EXPECT_STREQ(semaphore->getClassName(), "WinIPCSemaphore");
    EXPECT_TRUE(semaphore->isTypeOf("WinIPCSemaphore", false));
    EXPECT_TRUE(semaphore->isTypeOf("FObject", true));
    EXPECT_FALSE(semaphore->isTypeOf("CmObject", true));
    EXPECT_EQ(WinIPCSemaphore::metaClass.getParent(), nullptr);
}

TEST_F(WinIPCSemaphoreTest, WithoutAnEventFailsAtOnce) {
    const FRefPtr<IIPCSemaphore> semaphore = make();
    EXPECT_FALSE(semaphore->signal());
    EXPECT_FALSE(semaphore->wait());
}

TEST_F(WinIPCSemaphoreTest, CreateThatFailsLeavesNoEvent) {
    const FRefPtr<IIPCSemaphore> semaphore = makeNamed();
    EXPECT_EQ(semaphore->create(std::string(300, 'n').c_str()), 1);
    EXPECT_FALSE(semaphore->signal());
    EXPECT_FALSE(semaphore->wait());
}

TEST_F(WinIPCSemaphoreTest, SignalBeforeAnyWaitEndsTheNextWaitAndNotTheOneAfter) {
    const FRefPtr<IIPCSemaphore> semaphore = makeNamed();
    EXPECT_TRUE(semaphore->signal());
    EXPECT_TRUE(semaphore->wait());
    Waiter waiter(*semaphore);
    EXPECT_TRUE(waiter.isBlocked());
    EXPECT_TRUE(semaphore->signal());
    EXPECT_TRUE(waiter.comesBackTrue());
}

TEST_F(WinIPCSemaphoreTest, TwoSignalsBeforeAWaitAreOneWakeUp) {
    const FRefPtr<IIPCSemaphore> semaphore = makeNamed();
    semaphore->signal();
    semaphore->signal();
    EXPECT_TRUE(semaphore->wait());
    EXPECT_FALSE(isSet());
}

TEST_F(WinIPCSemaphoreTest, SignalInOneProcessWakesTheOther) {
    const FRefPtr<IIPCSemaphore> semaphore = makeNamed();
    HelperProcess helper(SEMAPHORE_HELPER);
    ASSERT_EQ(helper.ask("create " + name_), "create 0");
    helper.say("wait");
    EXPECT_EQ(helper.hear(std::chrono::milliseconds(kSoon)), "(nothing)");
    semaphore->signal();
    EXPECT_EQ(helper.hear(), "wait 1");

    Waiter waiter(*semaphore);
    EXPECT_TRUE(waiter.isBlocked());
    EXPECT_EQ(helper.ask("signal"), "signal 1");
    EXPECT_TRUE(waiter.comesBackTrue());
}

TEST_F(WinIPCSemaphoreTest, FirstToCreateIsTheOtherProcess) {
    HelperProcess helper(SEMAPHORE_HELPER);
    ASSERT_EQ(helper.ask("create " + name_), "create 0");
    ASSERT_EQ(helper.ask("signal"), "signal 1");
    EXPECT_TRUE(makeNamed()->wait());
}

TEST_F(WinIPCSemaphoreTest, ProcessThatIsKilledLeavesNoSignalBehind) {
    HelperProcess helper(SEMAPHORE_HELPER);
    ASSERT_EQ(helper.ask("create " + name_), "create 0");
    ASSERT_EQ(helper.ask("signal"), "signal 1");
    helper.kill();
    EXPECT_FALSE(isSet());
}

TEST_F(WinIPCSemaphoreTest, ListenerThatIsKilledIsReplacedByTheNext) {
    const FRefPtr<IIPCSemaphore> semaphore = makeNamed();
    HelperProcess first(SEMAPHORE_HELPER);
    ASSERT_EQ(first.ask("create " + name_), "create 0");
    first.say("wait");
    EXPECT_EQ(first.hear(std::chrono::milliseconds(kSoon)), "(nothing)");
    first.kill();
    HelperProcess second(SEMAPHORE_HELPER);
    ASSERT_EQ(second.ask("create " + name_), "create 0");
    second.say("wait");
    EXPECT_EQ(second.hear(std::chrono::milliseconds(kSoon)), "(nothing)");
    semaphore->signal();
    EXPECT_EQ(second.hear(), "wait 1");
}

TEST_F(WinIPCSemaphoreTest, SecondCreateReplacesTheEventWithoutClosingIt) {
    const FRefPtr<IIPCSemaphore> semaphore = makeNamed();
    semaphore->signal();
    EXPECT_EQ(semaphore->create((name_ + ".other").c_str()), 0);
    EXPECT_TRUE(isSet()) << "the first event is still open in this process";
    Waiter waiter(*semaphore);
    EXPECT_TRUE(waiter.isBlocked());
    semaphore->signal();
    EXPECT_TRUE(waiter.comesBackTrue());
}

TEST_F(WinIPCSemaphoreTest, LastReleaseClosesTheEvent) {
    {
        const FRefPtr<IIPCSemaphore> semaphore = makeNamed();
        semaphore->signal();
    }
    EXPECT_FALSE(isSet());
}

} // namespace
} // namespace tessera
