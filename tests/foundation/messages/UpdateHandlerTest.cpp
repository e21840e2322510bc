#include "foundation/messages/UpdateHandler.h"

#include "foundation/object/ClassFactory.h"
#include "foundation/object/CmObject.h"
#include "foundation/object/FRefPtr.h"
#include "foundation/object/UHostList.h"
#include "support/ForeignObject.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace tessera {
namespace {

using Log = std::vector<std::string>;

// Writes down what it is told under its name, and then does what the test wants done from inside update.
class Dependent : public FObject {
public:
    Dependent(const char* name, Log& log) : name_(name), log_(log) {}

    void update(IBaseUnknown*, std::int32_t message) override {
        log_.push_back(name_ + " " + std::to_string(message));
        if (then) {
            then();
        }
    }

    std::function<void()> then;

private:
    std::string name_;
    Log& log_;
};

class Subject : public CmObject {
public:
    explicit Subject(Log& log) : log_(log) {}
    ~Subject() override { log_.push_back("subject gone"); }
    void updateDone(std::int32_t message) override { log_.push_back("done " + std::to_string(message)); }

private:
    Log& log_;
};

class UpdateHandlerTest : public testing::Test {
protected:
    UpdateHandlerTest() : subject_(FRefPtr<Subject>::adopt(new Subject(log_))) {}

    void add(Dependent& dependent) { EXPECT_EQ(handler_.addDependent(subject_.get(), &dependent), kResultOk); }
    FResult trigger(std::int32_t message) { return handler_.triggerUpdates(subject_.get(), message, false); }
    void defer(std::int32_t message) { EXPECT_EQ(handler_.deferUpdates(subject_.get(), message), kResultOk); }

    Log log_;
    UpdateHandler handler_;
    FRefPtr<Subject> subject_;
    Dependent a_{"a", log_};
    Dependent b_{"b", log_};
    Dependent c_{"c", log_};
};

TEST_F(UpdateHandlerTest, TellsDependentsInTheOrderOfAdditionThenTheObject) {
    add(a_);
    add(b_);
    EXPECT_EQ(trigger(7), kResultOk);
    EXPECT_EQ(log_, (Log{"a 7", "b 7", "done 7"}));
}

TEST_F(UpdateHandlerTest, WithoutDependentsOnlyTheObjectIsTold) {
    EXPECT_EQ(trigger(7), kResultFalse);
    EXPECT_EQ(log_, Log{"done 7"});
}

TEST_F(UpdateHandlerTest, KeepDoneLeavesTheObjectUntold) {
    add(a_);
    EXPECT_EQ(handler_.triggerUpdates(subject_.get(), 7, true), kResultOk);
    EXPECT_EQ(log_, Log{"a 7"});
}

TEST_F(UpdateHandlerTest, DestructionReachesDependentsAndNeverUpdateDone) {
    add(a_);
    trigger(kObjectDestroyed);
    EXPECT_EQ(log_, Log{"a 2"});
}

TEST_F(UpdateHandlerTest, ADependentAddedTwiceIsToldTwice) {
    add(a_);
    add(a_);
    trigger(1);
    EXPECT_EQ(log_, (Log{"a 1", "a 1", "done 1"}));
    EXPECT_EQ(handler_.countDependents(subject_.get()), 2);
    handler_.removeDependent(subject_.get(), &a_);
    EXPECT_EQ(handler_.countDependents(subject_.get()), 0);
}

TEST_F(UpdateHandlerTest, RefusesNullsAndObjectsWithoutIdentity) {
    class Nobody final : public IBaseUnknown {
    public:
        FResult queryInterface(const FUIDBytes&, void** out) override {
            *out = nullptr;
            return kNoInterface;
        }
        std::uint32_t addRef() override { return 1; }
        std::uint32_t release() override { return 1; }
    } nobody;
    for (IBaseUnknown* object : {static_cast<IBaseUnknown*>(nullptr), static_cast<IBaseUnknown*>(&nobody)}) {
        EXPECT_EQ(handler_.addDependent(object, &a_), kResultFalse);
        EXPECT_EQ(handler_.triggerUpdates(object, 1, false), kResultFalse);
        EXPECT_EQ(handler_.deferUpdates(object, 1), kResultFalse);
        EXPECT_EQ(handler_.cancelUpdates(object), kResultFalse);
    }
    EXPECT_EQ(handler_.addDependent(subject_.get(), nullptr), kResultFalse);
    EXPECT_EQ(handler_.removeDependent(nullptr, nullptr), kResultFalse);
    EXPECT_EQ(handler_.removeDependent(&nobody, &a_), kResultFalse);
    EXPECT_EQ(handler_.triggerDeferred(&nobody), kResultFalse);
    EXPECT_EQ(handler_.countDependents(nullptr), 0);
}

TEST_F(UpdateHandlerTest, TwoInterfacesOfOneObjectAreOneObject) {
    UHostList list;
    handler_.addDependent(static_cast<IHostList*>(&list), &a_);
    EXPECT_EQ(handler_.countDependents(static_cast<FObject*>(&list)), 1);
    handler_.triggerUpdates(static_cast<FObject*>(&list), 3, false);
    EXPECT_EQ(log_, Log{"a 3"});
    EXPECT_EQ(list.getReferenceCount(), 1u);
}

TEST_F(UpdateHandlerTest, ForeignObjectsHaveDependentsToo) {
    test::ForeignObject<> foreign;
    handler_.addDependent(&foreign, &a_);
    EXPECT_EQ(handler_.triggerUpdates(&foreign, 3, false), kResultOk);
    EXPECT_EQ(log_, Log{"a 3"});
    EXPECT_EQ(foreign.references, 1u);
}

TEST_F(UpdateHandlerTest, ADependentThatRemovesItselfIsNotCalledAgainAndTheOthersStillAre) {
    add(a_);
    add(b_);
    add(a_);
    add(c_);
    a_.then = [&] { handler_.removeDependent(subject_.get(), &a_); };
    trigger(1);
    EXPECT_EQ(log_, (Log{"a 1", "b 1", "c 1", "done 1"}));
}

TEST_F(UpdateHandlerTest, ADependentMayRemoveAnother) {
    add(a_);
    add(b_);
    add(c_);
    a_.then = [&] { handler_.removeDependent(subject_.get(), &b_); };
    trigger(1);
    EXPECT_EQ(log_, (Log{"a 1", "c 1", "done 1"}));
}

TEST_F(UpdateHandlerTest, ADependentMayRemoveItselfEverywhere) {
    const auto other = FRefPtr<CmObject>::adopt(new CmObject);
    handler_.addDependent(other.get(), &b_);
    add(a_);
    add(b_);
    a_.then = [&] { handler_.removeDependent(nullptr, &b_); };
    trigger(1);
    handler_.triggerUpdates(other.get(), 1, false);
    EXPECT_EQ(log_, (Log{"a 1", "done 1"}));
    EXPECT_EQ(handler_.countDependents(nullptr), 1);
}

TEST_F(UpdateHandlerTest, RemovingTheLastEntryDoesNotDisturbTheRunningNotification) {
    add(a_);
    add(b_);
    // A null dependent erases the entry and leaves the notification that runs alone.
    a_.then = [&] { handler_.removeDependent(subject_.get(), nullptr); };
    trigger(1);
    EXPECT_EQ(log_, (Log{"a 1", "b 1", "done 1"}));
    EXPECT_EQ(handler_.countDependents(subject_.get()), 0);
}

TEST_F(UpdateHandlerTest, ADependentAddedFromInsideIsToldNextTime) {
    add(a_);
    a_.then = [&] {
        a_.then = nullptr;
        add(b_);
    };
    trigger(1);
    EXPECT_EQ(log_, (Log{"a 1", "done 1"}));
    trigger(3);
    EXPECT_EQ(log_, (Log{"a 1", "done 1", "a 3", "b 3", "done 3"}));
}

TEST_F(UpdateHandlerTest, ADependentMayReleaseTheObject) {
    add(a_);
    Subject* bare = subject_.get();
    a_.then = [&] {
        handler_.removeDependent(bare, &a_);
        subject_.reset();
    };
    trigger(1);
    EXPECT_EQ(log_, (Log{"a 1", "done 1", "subject gone"}));
}

TEST_F(UpdateHandlerTest, AnObjectMayTellItsOwnDestruction) {
    class Dying : public CmObject {
    public:
        explicit Dying(UpdateHandler& handler) : handler_(handler) {}
        ~Dying() override {
            handler_.triggerUpdates(this, kObjectDestroyed, false);
            handler_.removeDependent(static_cast<FObject*>(this), nullptr);
        }

    private:
        UpdateHandler& handler_;
    };
    auto* dying = new Dying(handler_);
    handler_.addDependent(dying, &a_);
    EXPECT_EQ(dying->release(), 0u);
    EXPECT_EQ(log_, Log{"a 2"});
    EXPECT_EQ(handler_.countDependents(nullptr), 0);
}

TEST_F(UpdateHandlerTest, NotificationsNest) {
    add(a_);
    add(b_);
    a_.then = [&] {
        a_.then = nullptr;
        trigger(3);
    };
    trigger(1);
    EXPECT_EQ(log_, (Log{"a 1", "a 3", "b 3", "done 3", "b 1", "done 1"}));
}

class Counter : public FObject {
public:
    void update(IBaseUnknown*, std::int32_t) override { ++count; }
    std::atomic<int> count{0};
};

TEST_F(UpdateHandlerTest, TellsAllOfATenThousandButNotBeyondTheBlock) {
    Counter counter;
    for (const int dependents : {1024, 1025, 10240, 10241}) {
        for (int i = handler_.countDependents(subject_.get()); i < dependents; ++i) {
            handler_.addDependent(subject_.get(), &counter);
        }
        counter.count = 0;
        trigger(1);
        EXPECT_EQ(counter.count, std::min(dependents, 10240));
    }
}

TEST_F(UpdateHandlerTest, CountsAllEntriesForNull) {
    const auto other = FRefPtr<CmObject>::adopt(new CmObject);
    add(a_);
    add(b_);
    handler_.addDependent(other.get(), &a_);
    EXPECT_EQ(handler_.countDependents(subject_.get()), 2);
    EXPECT_EQ(handler_.countDependents(other.get()), 1);
    EXPECT_EQ(handler_.countDependents(nullptr), 3);
}

TEST_F(UpdateHandlerTest, RemovingWhatIsNotThereIsNoFailure) {
    EXPECT_EQ(handler_.removeDependent(subject_.get(), &a_), kResultOk);
    EXPECT_EQ(handler_.removeDependent(nullptr, &a_), kResultOk);
}

TEST_F(UpdateHandlerTest, ADeferredChangeIsToldAtTheNextRound) {
    add(a_);
    defer(4);
    EXPECT_EQ(log_, Log{});
    EXPECT_EQ(handler_.triggerDeferred(nullptr), kResultOk);
    EXPECT_EQ(log_, (Log{"a 4", "done 4"}));
    handler_.triggerDeferred(nullptr);
    EXPECT_EQ(log_.size(), 2u);
}

TEST_F(UpdateHandlerTest, TheSameChangeDeferredTwiceIsToldOnce) {
    add(a_);
    defer(4);
    defer(5);
    defer(4);
    handler_.triggerDeferred(nullptr);
    EXPECT_EQ(log_, (Log{"a 4", "done 4", "a 5", "done 5"}));
}

TEST_F(UpdateHandlerTest, WithoutDependentsADeferredChangeIsDoneAtOnceAndNothingIsQueued) {
    defer(4);
    EXPECT_EQ(log_, Log{"done 4"});
    add(a_);
    handler_.triggerDeferred(nullptr);
    EXPECT_EQ(log_, Log{"done 4"});
}

TEST_F(UpdateHandlerTest, OneObjectsChangesCanBeToldAlone) {
    const auto other = FRefPtr<Subject>::adopt(new Subject(log_));
    handler_.addDependent(other.get(), &b_);
    add(a_);
    defer(1);
    handler_.deferUpdates(other.get(), 4);
    defer(3);
    handler_.triggerDeferred(subject_.get());
    EXPECT_EQ(log_, (Log{"a 1", "done 1", "a 3", "done 3"}));
    handler_.triggerDeferred(nullptr);
    EXPECT_EQ(log_.back(), "done 4");
}

TEST_F(UpdateHandlerTest, CancelledChangesAreNeverTold) {
    add(a_);
    defer(1);
    defer(2);
    EXPECT_EQ(handler_.cancelUpdates(subject_.get()), kResultOk);
    handler_.triggerDeferred(nullptr);
    EXPECT_EQ(log_, Log{});
}

TEST_F(UpdateHandlerTest, TheLastDependentTakesTheChangesWithIt) {
    add(a_);
    add(b_);
    defer(1);
    handler_.removeDependent(subject_.get(), &a_);
    handler_.removeDependent(subject_.get(), &b_);
    add(c_);
    handler_.triggerDeferred(nullptr);
    EXPECT_EQ(log_, Log{});
}

TEST_F(UpdateHandlerTest, AChangeOfAnObjectUnderNotificationWaitsForTheNextRound) {
    add(a_);
    a_.then = [&] {
        a_.then = nullptr;
        defer(9);
        handler_.triggerDeferred(nullptr);
        log_.push_back("inner round over");
    };
    trigger(1);
    EXPECT_EQ(log_, (Log{"a 1", "inner round over", "done 1"}));
    handler_.triggerDeferred(nullptr);
    EXPECT_EQ(log_.back(), "done 9");
}

TEST_F(UpdateHandlerTest, AChangeThatWaitsForTheNextRoundCanBeCancelled) {
    const auto other = FRefPtr<CmObject>::adopt(new CmObject);
    handler_.addDependent(other.get(), &b_);
    add(a_);
    a_.then = [&] {
        a_.then = nullptr;
        defer(9);
        handler_.deferUpdates(other.get(), 3);
        // The round first sets 9 aside, then tells 3, whose dependent cancels.
        b_.then = [&] { handler_.cancelUpdates(subject_.get()); };
        handler_.triggerDeferred(nullptr);
    };
    trigger(1);
    handler_.triggerDeferred(nullptr);
    EXPECT_EQ(log_, (Log{"a 1", "b 3", "done 1"}));
}

TEST_F(UpdateHandlerTest, AChainOfDeferredChangesIsToldInOneRound) {
    add(a_);
    int left = 5;
    a_.then = [&] {
        if (--left > 0) {
            // Behind the running notification: from the outer round's point of view the next change.
            defer(100 + left);
        }
    };
    defer(100);
    handler_.triggerDeferred(nullptr);
    EXPECT_EQ(left, 0);
    EXPECT_EQ(log_.size(), 10u);
}

TEST_F(UpdateHandlerTest, AnEndlessChainStopsAtTheCeilingAndGoesOnNextTime) {
    Counter counter;
    handler_.addDependent(subject_.get(), &counter);
    class Endless : public FObject {
    public:
        Endless(UpdateHandler& handler, CmObject& subject) : handler_(handler), subject_(subject) {}
        void update(IBaseUnknown*, std::int32_t) override { handler_.deferUpdates(&subject_, 1); }

    private:
        UpdateHandler& handler_;
        CmObject& subject_;
    } endless(handler_, *subject_);
    handler_.addDependent(subject_.get(), &endless);
    defer(1);
    handler_.triggerDeferred(nullptr);
    EXPECT_EQ(counter.count, 65536);
    handler_.triggerDeferred(nullptr);
    EXPECT_EQ(counter.count, 2 * 65536);
}

TEST_F(UpdateHandlerTest, TakesNoReferenceOfObjectOrDependent) {
    add(a_);
    defer(1);
    EXPECT_EQ(subject_->getReferenceCount(), 1u);
    EXPECT_EQ(a_.getReferenceCount(), 1u);
}

TEST_F(UpdateHandlerTest, IsOneObjectBehindItsTwoInterfaces) {
    const auto registry = queryFor<IUpdateRegistry>(static_cast<FObject*>(&handler_));
    ASSERT_TRUE(registry);
    const auto deferred = queryFor<IDeferredUpdates>(registry.get());
    ASSERT_TRUE(deferred);
    EXPECT_EQ(deferred.get(), static_cast<IDeferredUpdates*>(&handler_));
    EXPECT_TRUE(handler_.isTypeOf("UpdateHandler", false));
    EXPECT_TRUE(handler_.isTypeOf("FObject", true));
}

TEST(UpdateHandler, TheFirstOneInstallsItselfAndClearsThePlaceWhenItGoes) {
    IUpdateRegistry* const before = FObject::getUpdateHandler();
    FObject::setUpdateHandler(nullptr);
    {
        const UpdateHandler first;
        EXPECT_EQ(FObject::getUpdateHandler(), static_cast<const IUpdateRegistry*>(&first));
        { const UpdateHandler second; }
        EXPECT_EQ(FObject::getUpdateHandler(), static_cast<const IUpdateRegistry*>(&first));
    }
    EXPECT_EQ(FObject::getUpdateHandler(), nullptr);
    FObject::setUpdateHandler(before);
}

TEST(UpdateHandler, IsCreatedByItsIdentifier) {
    const auto registry = FRefPtr<IUpdateRegistry>::adopt(
        static_cast<IUpdateRegistry*>(ClassFactory::getInstance(true)->createInstance(IUpdateRegistry::iid)));
    EXPECT_EQ(registry.get(), UpdateHandler::getInstance(false));
}

TEST(UpdateHandler, ThreadsMayNotifyAddAndRemoveAtOnce) {
    UpdateHandler handler;
    const auto subject = FRefPtr<CmObject>::adopt(new CmObject);
    Counter steady;
    handler.addDependent(subject.get(), &steady);
    constexpr int kRounds = 500;
    // They outlive the threads: a notification that has looked at a dependent already still calls it.
    Counter passing[2];
    std::vector<std::thread> threads;
    for (Counter& counter : passing) {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                handler.triggerUpdates(subject.get(), 1, false);
                handler.deferUpdates(subject.get(), 5);
            }
        });
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                handler.addDependent(subject.get(), &counter);
                handler.addDependent(&counter, &steady);
                handler.removeDependent(subject.get(), &counter);
                handler.removeDependent(nullptr, &counter);
                handler.removeDependent(&counter, nullptr);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    handler.triggerDeferred(nullptr);
    EXPECT_GE(steady.count, 2 * kRounds);
    EXPECT_EQ(handler.countDependents(nullptr), 1);
}

} // namespace
} // namespace tessera
