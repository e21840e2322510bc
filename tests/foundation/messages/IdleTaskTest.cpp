// The task list and the timer that runs it, with all that the idle task does.
#include "foundation/messages/FAttributeListObject.h"
#include "foundation/messages/FIdleTimer.h"
#include "foundation/messages/FMessenger.h"
#include "foundation/messages/FTaskList.h"
#include "foundation/messages/UpdateHandler.h"
#include "foundation/object/ClassFactory.h"
#include "foundation/object/FSingletonList.h"
#include "platform/ThreadTimer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace tessera {
namespace {

using Log = std::vector<std::string>;

TEST(FTaskList, RunsTasksOnceInOrder) {
    FTaskList tasks;
    Log log;
    tasks.post([&] { log.push_back("one"); });
    tasks.post([&] { log.push_back("two"); });
    EXPECT_EQ(tasks.runTasks(), 2u);
    EXPECT_EQ(tasks.runTasks(), 0u);
    EXPECT_EQ(log, (Log{"one", "two"}));
}

TEST(FTaskList, WhatATaskPostsWaitsForTheNextTurn) {
    FTaskList tasks;
    Log log;
    tasks.post([&] { tasks.post([&] { log.push_back("posted"); }); });
    EXPECT_EQ(tasks.runTasks(), 1u);
    EXPECT_EQ(log, Log{});
    EXPECT_EQ(tasks.runTasks(), 1u);
    EXPECT_EQ(log, Log{"posted"});
}

TEST(FTaskList, TakesTasksFromOtherThreads) {
    FTaskList tasks;
    int ran = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int n = 0; n < 100; ++n) {
                tasks.post([&] { ++ran; });
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    tasks.runTasks();
    EXPECT_EQ(ran, 400);
}

// Tells every step of the idle task: it depends on a subject, receives messages, and changes the subject meanwhile.
class Observer : public CmObject {
public:
    Observer(CmObject& subject, Log& log) : subject_(subject), log_(log) {}
    void update(IBaseUnknown*, std::int32_t message) override { log_.push_back("update " + std::to_string(message)); }
    std::int32_t receiveMessage(FMessage* message) override {
        log_.push_back(message->getName());
        subject_.deferChanged(20);
        return 0;
    }

private:
    CmObject& subject_;
    Log& log_;
};

TEST(FIdleTimer, TellsChangesThenMessagesThenTheirChangesThenTasks) {
    UpdateHandler::getInstance(true);
    const auto subject = FRefPtr<CmObject>::adopt(new CmObject);
    Log log;
    Observer observer(*subject, log);
    subject->addDependent(&observer);
    FTaskList::process().post([&] { log.push_back("task"); });
    FMessenger::getInstance()->postMessage(&observer, new FMessage(FStringRef("message")));
    subject->deferChanged(10);
    FIdleTimer::runIdleTask();
    EXPECT_EQ(log, (Log{"update 10", "message", "update 20", "task"}));
    subject->removeDependent(&observer);
}

TEST(FIdleTimer, TicksEvery120MillisecondsFromTheLoopOfItsThread) {
    const auto start = std::chrono::steady_clock::now();
    const FIdleTimer timer;
    EXPECT_NE(UpdateHandler::getInstance(false), nullptr);
    bool ran = false;
    FTaskList::process().post([&] { ran = true; });
    EXPECT_EQ(platform::runDueTimers(), 0);
    while (!ran && std::chrono::steady_clock::now() - start < std::chrono::seconds(20)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(platform::millisecondsToNextTimer()));
        platform::runDueTimers();
    }
    EXPECT_TRUE(ran);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(120));
}

TEST(FIdleTimer, WhilePausedNothingIsDone) {
    FIdleTimer timer;
    timer.setPaused(true);
    EXPECT_TRUE(timer.isPaused());
    bool ran = false;
    FTaskList::process().post([&] { ran = true; });
    std::this_thread::sleep_for(std::chrono::milliseconds(platform::millisecondsToNextTimer()));
    EXPECT_EQ(platform::runDueTimers(), 1);
    EXPECT_FALSE(ran);
    timer.setPaused(false);
    std::this_thread::sleep_for(std::chrono::milliseconds(platform::millisecondsToNextTimer()));
    EXPECT_EQ(platform::runDueTimers(), 1);
    EXPECT_TRUE(ran);
}

TEST(FIdleTimer, EndsWithItsObject) {
    { const FIdleTimer timer; }
    EXPECT_EQ(platform::millisecondsToNextTimer(), -1);
}

TEST(FAttributeListObject, IsCreatedAndAnsweredUnderBothItsIdentifiers) {
    for (const FUIDBytes& uid : {IAttributeList::iid, IAttributeList::secondIid}) {
        const auto list = FRefPtr<IAttributeList>::adopt(
            static_cast<IAttributeList*>(ClassFactory::getInstance(true)->createInstance(uid)));
        ASSERT_TRUE(list);
        EXPECT_EQ(static_cast<FAttributeListObject*>(list.get())->attributes().getCount(), 0);
        for (const FUIDBytes& asked : {IBaseUnknown::iid, IAttributeList::iid, IAttributeList::secondIid}) {
            void* out = nullptr;
            EXPECT_EQ(list->queryInterface(asked, &out), kResultOk);
            EXPECT_EQ(out, list.get());
            EXPECT_EQ(list->release(), 1u);
        }
        void* out = list.get();
        EXPECT_EQ(list->queryInterface(FObject::privateUID(), &out), kNoInterface);
        EXPECT_EQ(out, nullptr);
    }
}

// The services go down in the order in which they were made; whoever comes later meets none, and asks nothing of it.
class LateTalker : public CmObject {
public:
    ~LateTalker() override {
        changed(kObjectDestroyed);
        deferChanged(3);
        removeDependent(this);
        FIdleTimer::runIdleTask();
        std::fputs(UpdateHandler::getInstance(true) == nullptr ? "no handler, " : "a handler, ", stderr);
        std::fputs(FObject::getUpdateHandler() == nullptr ? "none installed" : "one installed", stderr);
    }
};

TEST(MessagesDeathTest, NothingIsMadeOrMissedAtTheEndOfTheProcess) {
    EXPECT_EXIT(
        {
            UpdateHandler::getInstance(true);
            static constinit FSingleton<LateTalker> talker([] { return new LateTalker; });
            talker.get(true);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "no handler, none installed");
}

} // namespace
} // namespace tessera
