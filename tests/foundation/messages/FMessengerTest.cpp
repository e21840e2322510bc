#include "foundation/messages/FMessenger.h"

#include "foundation/messages/FPostedMessage.h"
#include "foundation/messages/IMessageHook.h"
#include "foundation/messages/IMessageTarget.h"
#include "foundation/object/ClassFactory.h"
#include "support/ForeignObject.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace tessera {
namespace {

using Log = std::vector<std::string>;
using Coalesce = FMessenger::Coalesce;
using HookUse = FMessenger::HookUse;

// A target of this module: it writes down the names of what it receives, then does what the test wants.
class Target : public CmObject {
public:
    explicit Target(Log& log, const char* prefix = "") : log_(log), prefix_(prefix) {}
    std::int32_t receiveMessage(FMessage* message) override {
        log_.push_back(prefix_ + message->getName());
        if (then) {
            then();
        }
        return 17;
    }

    std::function<void()> then;

private:
    Log& log_;
    std::string prefix_;
};

// A target of another module.
class ForeignTarget : public test::ForeignObject<IMessageTarget> {
public:
    std::int32_t receiveMessage(IMessageAccess* message) override {
        log.push_back(message->getName());
        return 18;
    }

    Log log;
};

class BothTarget : public CmClass<BothTarget, CmObject, IMessageTarget> {
public:
    static FMetaClass metaClass;
    std::int32_t receiveMessage(FMessage*) override { return 1; }
    std::int32_t receiveMessage(IMessageAccess*) override { return 2; }
};
FMetaClass BothTarget::metaClass("BothTarget", &CmObject::metaClass, nullptr);

// A target that goes as targets do: its messages first.
class LeavingTarget final : public Target {
public:
    LeavingTarget(Log& log, FMessenger& messenger) : Target(log, "leaving "), messenger_(messenger) {}
    ~LeavingTarget() override { messenger_.removeMessages(this, nullptr); }

private:
    FMessenger& messenger_;
};

class RecordingHook final : public IMessageHook {
public:
    void beforeDelivery(const char* name, IBaseUnknown*, FMessage* message) override {
        calls.push_back(std::string(name) + ":" + message->getName());
    }

    Log calls;
};

class FMessengerTest : public testing::Test {
protected:
    void post(IBaseUnknown* target, const char* name, Coalesce coalesce = Coalesce::never, std::int32_t delay = 0) {
        messenger_.postMessage(target, new FMessage(FStringRef(name)), coalesce, delay);
    }
    void rounds(int count) {
        for (int i = 0; i < count; ++i) {
            messenger_.deliverMessages();
        }
    }

    Log log_;
    Target target_{log_};
    FMessenger messenger_;
};

TEST_F(FMessengerTest, DeliversInOrderAtTheNextRound) {
    post(&target_, "one");
    post(&target_, "two");
    EXPECT_EQ(log_, Log{});
    rounds(1);
    EXPECT_EQ(log_, (Log{"one", "two"}));
    rounds(1);
    EXPECT_EQ(log_.size(), 2u);
}

TEST_F(FMessengerTest, ADelayOfTwoIsDeliveredInTheThirdRound) {
    post(&target_, "late", Coalesce::never, 2);
    post(&target_, "now");
    rounds(1);
    EXPECT_EQ(log_, Log{"now"});
    rounds(1);
    EXPECT_EQ(log_, Log{"now"});
    rounds(1);
    EXPECT_EQ(log_, (Log{"now", "late"}));
}

TEST_F(FMessengerTest, WaitingMessagesKeepTheirOrder) {
    post(&target_, "a", Coalesce::never, 1);
    post(&target_, "b", Coalesce::never, 1);
    rounds(1);
    post(&target_, "c");
    rounds(1);
    EXPECT_EQ(log_, (Log{"a", "b", "c"}));
}

TEST_F(FMessengerTest, ANegativeDelayIsNone) {
    post(&target_, "now", Coalesce::never, -5);
    rounds(1);
    EXPECT_EQ(log_, Log{"now"});
}

TEST_F(FMessengerTest, TakesOverThePostersReferenceAndGivesItBack) {
    const FRefPtr<FMessage> message = FRefPtr<FMessage>::adopt(new FMessage(FStringRef("name")));
    message->addRef();
    messenger_.postMessage(&target_, message.get());
    EXPECT_EQ(message->getReferenceCount(), 2u);
    rounds(1);
    EXPECT_EQ(message->getReferenceCount(), 1u);
    EXPECT_EQ(target_.getReferenceCount(), 1u);
}

TEST_F(FMessengerTest, CoalescingDropsWhatWaitsAlready) {
    const auto message = FRefPtr<FMessage>::adopt(new FMessage(FStringRef("name")));
    post(&target_, "name");
    message->addRef();
    messenger_.postMessage(&target_, message.get(), Coalesce::sameTargetAndName);
    EXPECT_EQ(message->getReferenceCount(), 1u);
    rounds(1);
    EXPECT_EQ(log_, Log{"name"});
}

TEST_F(FMessengerTest, CoalescingMindsTargetAndName) {
    Target other(log_, "other ");
    post(&target_, "name");
    post(&other, "name", Coalesce::sameTargetAndName);
    post(&target_, "Name", Coalesce::sameTargetAndName);
    rounds(1);
    EXPECT_EQ(log_, (Log{"name", "other name", "Name"}));
}

TEST_F(FMessengerTest, CoalescingTakesNoNameForANameOfItsOwn) {
    post(&target_, "name");
    messenger_.postMessage(&target_, new FMessage, Coalesce::sameTargetAndName);
    messenger_.postMessage(&target_, new FMessage, Coalesce::sameTargetAndName);
    post(&target_, "name", Coalesce::sameTargetAndName);
    rounds(1);
    EXPECT_EQ(log_, (Log{"name", ""}));
}

TEST_F(FMessengerTest, CoalescingQueuesWhatIsOnlyBeingDelivered) {
    // While the first is handed over, a second of that name stands in the same round's list, and none in the queue.
    target_.then = [&] {
        target_.then = nullptr;
        post(&target_, "name", Coalesce::sameTargetAndName);
    };
    post(&target_, "first");
    post(&target_, "name");
    rounds(1);
    EXPECT_EQ(log_, (Log{"first", "name"}));
    rounds(1);
    EXPECT_EQ(log_, (Log{"first", "name", "name"}));
}

TEST_F(FMessengerTest, WhatATargetPostsWaitsForTheNextRound) {
    target_.then = [&] {
        target_.then = nullptr;
        post(&target_, "second");
    };
    post(&target_, "first");
    rounds(1);
    EXPECT_EQ(log_, Log{"first"});
    rounds(1);
    EXPECT_EQ(log_, (Log{"first", "second"}));
}

TEST_F(FMessengerTest, ATargetMayRemoveTheRestOfTheRound) {
    target_.then = [&] { messenger_.removeMessages(&target_, nullptr); };
    post(&target_, "first");
    post(&target_, "second");
    rounds(2);
    EXPECT_EQ(log_, Log{"first"});
}

TEST_F(FMessengerTest, ATargetMayRunARoundOfItsOwn) {
    target_.then = [&] {
        target_.then = nullptr;
        post(&target_, "third");
        rounds(1);
        log_.push_back("inner round over");
    };
    post(&target_, "first");
    post(&target_, "second");
    rounds(1);
    EXPECT_EQ(log_, (Log{"first", "second", "third", "inner round over"}));
}

TEST_F(FMessengerTest, WhileSuspendedEverythingWaitsInOrder) {
    EXPECT_FALSE(messenger_.setSuspended(true));
    post(&target_, "one");
    rounds(1);
    post(&target_, "two");
    rounds(3);
    EXPECT_EQ(log_, Log{});
    EXPECT_TRUE(messenger_.setSuspended(false));
    rounds(1);
    EXPECT_EQ(log_, (Log{"one", "two"}));
}

TEST_F(FMessengerTest, RemovesByTargetAndName) {
    Target other(log_, "other ");
    for (const char* name : {"keep", "drop", "keep", "drop"}) {
        post(&target_, name);
        post(&other, name);
    }
    messenger_.removeMessages(&target_, "drop");
    messenger_.removeMessages(&other, nullptr);
    messenger_.removeMessages(nullptr, "keep");
    rounds(1);
    EXPECT_EQ(log_, (Log{"keep", "keep"}));
}

TEST_F(FMessengerTest, RemovingAMessageMayEndATargetThatRemovesItsOwn) {
    for (const bool othersWait : {false, true}) {
        log_.clear();
        auto* leaving = new LeavingTarget(log_, messenger_);
        auto* message = new FMessage(FStringRef("carries the other target"));
        message->setObject("target", static_cast<FObject*>(leaving), true);
        messenger_.postMessage(&target_, message);
        post(leaving, "never arrives");
        Target other(log_);
        if (othersWait) {
            post(&other, "a");
            post(&other, "b");
        }
        messenger_.removeMessages(&target_, nullptr);
        EXPECT_EQ(messenger_.hasMessages(nullptr, nullptr), othersWait);
        rounds(1);
        EXPECT_EQ(log_, othersWait ? (Log{"a", "b"}) : Log{});
    }
}

TEST_F(FMessengerTest, RemovedMessagesGoWhenTheQueueIsFree) {
    // The message's end waits for a thread that posts.
    class PostsElsewhere final : public CmObject {
    public:
        explicit PostsElsewhere(std::function<void()> post) : post_(std::move(post)) {}
        ~PostsElsewhere() override { std::thread(post_).join(); }

    private:
        std::function<void()> post_;
    };
    auto* message = new FMessage(FStringRef("first"));
    message->setObject("object", static_cast<FObject*>(new PostsElsewhere([&] { post(&target_, "second"); })), true);
    messenger_.postMessage(&target_, message);
    messenger_.removeMessages(&target_, "first");
    rounds(1);
    EXPECT_EQ(log_, Log{"second"});
}

TEST_F(FMessengerTest, KnowsWhatWaits) {
    Target other(log_);
    EXPECT_FALSE(messenger_.hasMessages(nullptr, nullptr));
    post(&target_, "name", Coalesce::never, 5);
    EXPECT_TRUE(messenger_.hasMessages(nullptr, nullptr));
    EXPECT_TRUE(messenger_.hasMessages(&target_, nullptr));
    EXPECT_TRUE(messenger_.hasMessages(nullptr, "name"));
    EXPECT_TRUE(messenger_.hasMessages(&target_, "name"));
    EXPECT_FALSE(messenger_.hasMessages(&target_, "other"));
    EXPECT_FALSE(messenger_.hasMessages(&other, nullptr));
}

TEST_F(FMessengerTest, AForeignTargetIsReachedByItsInterface) {
    ForeignTarget foreign;
    post(&foreign, "name");
    rounds(1);
    EXPECT_EQ(foreign.log, Log{"name"});
    EXPECT_EQ(foreign.references, 1u);
}

TEST_F(FMessengerTest, TheInterfaceComesBeforeTheObject) {
    const auto both = FRefPtr<BothTarget>::adopt(new BothTarget);
    messenger_.addTarget("both", static_cast<FObject*>(both.get()));
    FMessage message;
    EXPECT_EQ(messenger_.sendTo("both", &message, HookUse::skip), 2);
}

TEST_F(FMessengerTest, ATargetThatCannotReceiveGetsNothing) {
    test::ForeignObject<> deaf;
    post(&deaf, "name");
    rounds(1);
    EXPECT_EQ(deaf.references, 1u);
    EXPECT_FALSE(messenger_.hasMessages(nullptr, nullptr));
}

TEST_F(FMessengerTest, AMessageWithoutTargetIsDropped) {
    const auto message = FRefPtr<FMessage>::adopt(new FMessage);
    message->addRef();
    messenger_.postMessage(nullptr, message.get());
    EXPECT_EQ(message->getReferenceCount(), 1u);
    EXPECT_FALSE(messenger_.hasMessages(nullptr, nullptr));
    messenger_.postMessage(&target_, nullptr);
    EXPECT_FALSE(messenger_.hasMessages(nullptr, nullptr));
}

TEST_F(FMessengerTest, OtherModulesPostThroughTheInterface) {
    const auto message = FRefPtr<FMessage>::adopt(new FMessage(FStringRef("name")));
    test::ForeignObject<> noMessage;
    IMessagePost& interface = messenger_;
    interface.post(&target_, static_cast<IMessageAccess*>(message.get()));
    interface.post(&target_, &noMessage);
    interface.post(&target_, nullptr);
    EXPECT_EQ(message->getReferenceCount(), 2u);
    rounds(1);
    EXPECT_EQ(log_, Log{"name"});
}

TEST_F(FMessengerTest, NamedTargetsAreReferencedUntilTheyAreRemoved) {
    EXPECT_TRUE(messenger_.addTarget("name", &target_));
    EXPECT_FALSE(messenger_.addTarget("name", &target_));
    EXPECT_EQ(target_.getReferenceCount(), 2u);
    EXPECT_TRUE(messenger_.removeTarget("name"));
    EXPECT_FALSE(messenger_.removeTarget("name"));
    EXPECT_EQ(target_.getReferenceCount(), 1u);
    EXPECT_FALSE(messenger_.addTarget(nullptr, &target_));
    EXPECT_FALSE(messenger_.addTarget("name", nullptr));
}

TEST_F(FMessengerTest, RemovingATargetPurgesItsMessages) {
    messenger_.addTarget("name", &target_);
    messenger_.postTo("name", FRefPtr<FMessage>::adopt(new FMessage).get(), HookUse::skip);
    messenger_.removeTarget("name");
    rounds(1);
    EXPECT_EQ(log_, Log{});
}

TEST_F(FMessengerTest, SendToCallsAtOnceAndPostToLater) {
    messenger_.addTarget("name", &target_);
    const auto message = FRefPtr<FMessage>::adopt(new FMessage(FStringRef("hello")));
    EXPECT_EQ(messenger_.sendTo("name", message.get(), HookUse::skip), 17);
    EXPECT_EQ(log_, Log{"hello"});
    EXPECT_TRUE(messenger_.postTo("name", message.get(), HookUse::skip));
    EXPECT_EQ(log_.size(), 1u);
    rounds(1);
    EXPECT_EQ(log_, (Log{"hello", "hello"}));
    EXPECT_EQ(message->getReferenceCount(), 1u);
}

TEST_F(FMessengerTest, AnUnknownNameGivesNothing) {
    FMessage message;
    EXPECT_EQ(messenger_.sendTo("nobody", &message, HookUse::call), 0);
    EXPECT_FALSE(messenger_.postTo("nobody", &message, HookUse::call));
    EXPECT_EQ(message.getReferenceCount(), 1u);
}

TEST_F(FMessengerTest, TheHookSeesDeliveriesThatAskForIt) {
    RecordingHook hook;
    messenger_.setHook(&hook);
    messenger_.addTarget("name", &target_);
    FMessage message(FStringRef("hello"));
    messenger_.sendTo("name", &message, HookUse::skip);
    messenger_.sendTo("name", &message, HookUse::call);
    messenger_.postTo("name", &message, HookUse::call);
    EXPECT_EQ(hook.calls, (Log{"name:hello", "name:hello"}));
    EXPECT_EQ(log_.size(), 2u);
    messenger_.setHook(nullptr);
    messenger_.sendTo("name", &message, HookUse::call);
    EXPECT_EQ(hook.calls.size(), 2u);
    rounds(1);
}

TEST_F(FMessengerTest, ATargetMayAskForTargetsWhileItIsCalled) {
    messenger_.addTarget("name", &target_);
    target_.then = [&] {
        target_.then = nullptr;
        messenger_.removeTarget("name");
    };
    FMessage message(FStringRef("hello"));
    EXPECT_EQ(messenger_.sendTo("name", &message, HookUse::skip), 17);
    EXPECT_EQ(messenger_.sendTo("name", &message, HookUse::skip), 0);
}

TEST_F(FMessengerTest, GroupsCountFromOneAndReachAllTheirMembers) {
    Target other(log_, "other ");
    EXPECT_EQ(messenger_.createGroup(), 1);
    EXPECT_EQ(messenger_.createGroup(), 2);
    EXPECT_TRUE(messenger_.addToGroup(1, &target_));
    EXPECT_TRUE(messenger_.addToGroup(1, &other));
    EXPECT_EQ(target_.getReferenceCount(), 1u);
    FMessage message(FStringRef("hello"));
    EXPECT_TRUE(messenger_.sendToGroup(1, &message));
    EXPECT_EQ(log_, (Log{"hello", "other hello"}));
    EXPECT_TRUE(messenger_.sendToGroup(2, &message));
    EXPECT_TRUE(messenger_.removeFromGroup(1, &target_));
    EXPECT_FALSE(messenger_.removeFromGroup(1, &target_));
    EXPECT_TRUE(messenger_.postToGroup(1, &message));
    rounds(1);
    EXPECT_EQ(log_, (Log{"hello", "other hello", "other hello"}));
    EXPECT_EQ(message.getReferenceCount(), 1u);
}

TEST_F(FMessengerTest, ARemovedGroupIsGoneAndItsIdIsNotUsedAgain) {
    FMessage message;
    const std::int32_t id = messenger_.createGroup();
    EXPECT_TRUE(messenger_.removeGroup(id));
    EXPECT_FALSE(messenger_.removeGroup(id));
    EXPECT_FALSE(messenger_.addToGroup(id, &target_));
    EXPECT_FALSE(messenger_.removeFromGroup(id, &target_));
    EXPECT_FALSE(messenger_.sendToGroup(id, &message));
    EXPECT_FALSE(messenger_.postToGroup(id, &message));
    EXPECT_EQ(messenger_.createGroup(), id + 1);
    for (const std::int32_t unknown : {0, -1, 99}) {
        EXPECT_FALSE(messenger_.addToGroup(unknown, &target_));
    }
    EXPECT_FALSE(messenger_.addToGroup(id + 1, nullptr));
}

TEST_F(FMessengerTest, ATargetsMessagesAreRemovedWhicheverInterfaceTheyWerePostedTo) {
    const auto both = FRefPtr<BothTarget>::adopt(new BothTarget);
    post(static_cast<IMessageTarget*>(both.get()), "name");
    messenger_.removeMessages(static_cast<FObject*>(both.get()), nullptr);
    EXPECT_FALSE(messenger_.hasMessages(nullptr, nullptr));
}

TEST(FMessenger, WhatIsLeftAtItsEndIsReleasedUndelivered) {
    Log log;
    Target target(log);
    const auto message = FRefPtr<FMessage>::adopt(new FMessage);
    {
        FMessenger messenger;
        messenger.addTarget("name", &target);
        message->addRef();
        messenger.postMessage(&target, message.get());
    }
    EXPECT_EQ(message->getReferenceCount(), 1u);
    EXPECT_EQ(target.getReferenceCount(), 1u);
    EXPECT_EQ(log, Log{});
}

TEST(FMessenger, TheProcessHasOneFromItsStart) {
    ASSERT_NE(FMessenger::getInstance(), nullptr);
    { const FMessenger another; }
    EXPECT_NE(FMessenger::getInstance(), nullptr);
    const auto post = FRefPtr<IMessagePost>::adopt(
        static_cast<IMessagePost*>(ClassFactory::getInstance(true)->createInstance(IMessagePost::iid)));
    EXPECT_EQ(post.get(), static_cast<IMessagePost*>(FMessenger::getInstance()));
}

TEST(FMessenger, ThreadsMayPostWhileOneDelivers) {
    class Tally : public CmObject {
    public:
        std::int32_t receiveMessage(FMessage* message) override {
            sum += message->getInt(FStringRef("value"));
            return 0;
        }
        std::int64_t sum = 0;
    } tally;
    FMessenger messenger;
    constexpr int kThreads = 3;
    constexpr int kMessages = 500;
    std::atomic<int> running{kThreads};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            for (int n = 1; n <= kMessages; ++n) {
                auto* message = new FMessage(FStringRef("add"));
                message->setInt("value", n);
                messenger.postMessage(&tally, message);
                messenger.hasMessages(&tally, "add");
                messenger.removeMessages(&tally, "other");
            }
            --running;
        });
    }
    while (running > 0) {
        messenger.deliverMessages();
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    messenger.deliverMessages();
    EXPECT_EQ(tally.sum, kThreads * kMessages * (kMessages + 1) / 2);
}

TEST(FMessenger, ATargetThatHasRemovedItsMessagesIsNotCalledAfterwards) {
    FMessenger messenger;
    std::atomic<bool> over{false};
    std::thread deliverer([&] {
        while (!over) {
            messenger.deliverMessages();
        }
    });
    for (int i = 0; i < 200; ++i) {
        Log log;
        {
            Target target(log);
            for (int n = 0; n < 5; ++n) {
                messenger.postMessage(&target, new FMessage(FStringRef("name")));
            }
            messenger.removeMessages(&target, nullptr);
        }
        // The sanitizers see a call into what has gone.
        EXPECT_LE(log.size(), 5u);
    }
    over = true;
    deliverer.join();
}

} // namespace
} // namespace tessera
