#include "host/HostFixture.h"

#include "host/GuestDoubles.h"
#include "shell/hostapi/IAlertHost.h"
#include "shell/hostapi/IObjectTest.h"

#include <stdexcept>

namespace tessera::host {
namespace {

class ServicesTest : public HostFixture {
protected:
    void enterCommand() {
        ASSERT_EQ(
            host().commands().addCommand(this, "Audio", u"Edit in Tessera", 0, "Tessera Exchange", "Edit in Tessera"),
            kResultOk);
    }
    CommandTarget::Outcome run() { return host().commandTarget().run("Tessera Exchange", "Edit in Tessera"); }
};

TEST_F(ServicesTest, ACommandIsCheckedAndThenExecuted) {
    RecordingHandler handler;
    EXPECT_EQ(run(), CommandTarget::Outcome::noSuchCommand);
    enterCommand();
    EXPECT_EQ(run(), CommandTarget::Outcome::disabled) << "nobody has enabled it";
    EXPECT_EQ(host().commandTarget().enableCommand("Tessera Exchange", "Other"), kResultFalse);
    EXPECT_EQ(host().commandTarget().enableCommand("Tessera Exchange", "Edit in Tessera"), kResultOk);
    EXPECT_EQ(run(), CommandTarget::Outcome::disabled) << "nobody answers for it";
    ASSERT_EQ(host().commandTarget().addHandler(&handler), kResultOk);
    EXPECT_EQ(run(), CommandTarget::Outcome::done);
    EXPECT_EQ(handler.calls, "check Tessera Exchange/Edit in Tessera execute Tessera Exchange/Edit in Tessera ");
    handler.executeAnswer = kResultFalse;
    EXPECT_EQ(run(), CommandTarget::Outcome::refused);
    handler.checkAnswer = kResultFalse;
    EXPECT_EQ(run(), CommandTarget::Outcome::disabled);
    EXPECT_EQ(host().commandTarget().removeHandler(&handler), kResultOk);
    EXPECT_EQ(host().commandTarget().removeHandler(&handler), kResultFalse);
    EXPECT_EQ(handler.references, 1U);
}

TEST_F(ServicesTest, CommandsGoWithTheirOwner) {
    enterCommand();
    int other = 0;
    EXPECT_EQ(host().commands().removeCommands(&other), kResultFalse);
    EXPECT_EQ(host().commands().removeCommands(this), kResultOk);
    EXPECT_TRUE(host().commands().commands().empty());
}

TEST_F(ServicesTest, IdleClientsMayLeaveWhileTheyAreCalled) {
    RecordingIdleClient first;
    RecordingIdleClient second;
    RecordingIdleClient third;
    for (RecordingIdleClient* client : {&first, &second, &third}) {
        host().idle().addClient(client);
    }
    first.action = [&] {
        host().idle().removeClient(&first);
        host().idle().removeClient(&second);
    };
    host().turn();
    host().turn();
    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(second.calls, 0);
    EXPECT_EQ(third.calls, 2);
    EXPECT_EQ(first.references, 1U) << "the host holds no reference of an idle client";
    host().idle().removeClient(&third);
}

TEST_F(ServicesTest, AnExceptionFromAGuestEndsAtTheHost) {
    RecordingIdleClient client;
    client.action = [] { throw std::runtime_error("broken"); };
    host().idle().addClient(&client);
    host().turn();
    EXPECT_EQ(misuses(), std::vector<std::string>{"an exception came out of IIdleClient.onIdle: broken"});
    host().idle().removeClient(&client);
}

TEST_F(ServicesTest, TheDriverGoesToTheOtherProgramAndBack) {
    RecordingDriverClient client;
    EXPECT_NE(host().driver().requestRelease(&client, "x"), 0) << "never added";
    EXPECT_EQ(misuses().size(), 1U);
    ASSERT_EQ(host().driver().addClient(&client), kResultOk);
    EXPECT_EQ(host().driver().requestRelease(&client, "the editor plays"), 0);
    EXPECT_FALSE(host().driver().hostHasDriver());
    EXPECT_NE(output().find("the editor plays"), std::string::npos);
    EXPECT_EQ(host().suspendDriver("the host plays"), "");
    EXPECT_TRUE(host().driver().hostHasDriver());
    EXPECT_EQ(client.texts, std::vector<std::u16string>{u"the host plays"});
    EXPECT_EQ(host().driver().removeClient(&client), kResultOk);
    EXPECT_EQ(client.references, 1U);
}

TEST_F(ServicesTest, AlertsArePrintedWithTheirButton) {
    service<IAlertHost>()->show(u"It can't be done.", u"OK", 0, 0);
    EXPECT_EQ(output(), "alert: It can't be done. [OK]\n");
}

TEST_F(ServicesTest, ListenersFollowTheActiveProject) {
    RecordingListener listener;
    makeProject({});
    const FRefPtr<IProjectList> list = service<IProjectList>();
    list->addListener(&listener);
    EXPECT_EQ(listener.calls, "activated ") << "told at once of the project that is open already";
    EXPECT_EQ(listener.active, static_cast<IProject*>(host().project().get()));
    ASSERT_EQ(host().closeProject(), "");
    makeProject({});
    EXPECT_EQ(listener.calls, "activated gone activated ");
    EXPECT_EQ(list->removeListener(&listener), kResultOk);
    EXPECT_EQ(list->removeListener(&listener), kResultFalse);
    EXPECT_EQ(listener.references, 1U);
}

TEST_F(ServicesTest, AnObjectIsTheSameThroughAllItsTables) {
    makeProject({makeSound("a.wav", 10), makeSound("b.wav", 10)});
    const FRefPtr<IObjectTest> test = service<IObjectTest>();
    IProjectObject* const one = event(1).get();
    IAudioEvent* const sameOne = event(1).get();
    EXPECT_EQ(test->compare(one, sameOne), kResultOk);
    EXPECT_EQ(test->compare(one, static_cast<IProjectObject*>(event(2).get())), kResultFalse);
    EXPECT_EQ(test->compare(one, nullptr), kResultFalse);
    EXPECT_EQ(test->compare(nullptr, nullptr), kResultOk);
    EXPECT_EQ(test->compare(one->parent()->parent(), static_cast<IProject*>(host().project().get())), kResultOk);
}

TEST_F(ServicesTest, TheCycleIsSetThroughItsParameters) {
    const FRefPtr<ITransport> transport = service<ITransport>();
    const FRefPtr<ITimeValue> left = queryFor<ITimeValue>(transport->parameter("cycleLeftTime"));
    const FRefPtr<ITimeValue> right = queryFor<ITimeValue>(transport->parameter("cycleRightTime"));
    ASSERT_TRUE(left && right);
    EXPECT_EQ(transport->parameter("tempo"), nullptr);
    EXPECT_EQ(left->setValue(1.5, 1), kResultOk);
    EXPECT_EQ(right->setValue(4, 1), kResultOk);
    transport->locate(2);
    EXPECT_EQ(host().transport().cycleLeft().seconds(), 1.5);
    EXPECT_EQ(host().transport().cycleRight().seconds(), 4);
    EXPECT_EQ(host().transport().position(), 2);
}

TEST_F(ServicesTest, TheSelectionListsItsTwoKinds) {
    makeProject({makeSound("a.wav", 3000), makeSound("b.wav", 3000)});
    const FRefPtr<ISelection> selection = service<ISelection>();
    const std::uint64_t scope = selection->currentScope();
    EXPECT_EQ(selection->selectKind(scope, 1), kResultOk);
    EXPECT_EQ(selection->count(), 0);
    ASSERT_EQ(host().select({2, 1}), "");
    ASSERT_EQ(selection->count(), 2);
    FRefPtr<IBaseUnknown> item;
    std::uint64_t itemScope = 0;
    EXPECT_EQ(selection->item(0, item.receive(), &itemScope), kResultOk);
    EXPECT_EQ(ownObject<Event>(item.get()), event(2).get());
    EXPECT_EQ(selection->item(2, item.receive(), &itemScope), kInvalidArgument);
    EXPECT_EQ(selection->selectKind(scope, 9), kResultOk);
    EXPECT_EQ(selection->count(), 0);
    ASSERT_EQ(host().selectRange({4, 5}), "");
    ASSERT_EQ(selection->count(), 1) << "only the second event lies there";
    EXPECT_EQ(selection->item(0, item.receive(), &itemScope), kResultOk);
    EXPECT_EQ(ownObject<Event>(item.get()), event(2).get());
    EXPECT_NEAR(event(2)->clipOffset(itemScope), 1, 1e-5);
    EXPECT_EQ(selection->selectKind(scope, 3), kResultFalse);
    EXPECT_EQ(selection->count(), 0);
    EXPECT_TRUE(misuses().empty());
}

TEST_F(ServicesTest, RestrictionsAnswerForTheirKindOfProcessing) {
    makeProject({makeSound("a.wav", 10)});
    const FRefPtr<IEventRestrictions> asked = queryFor<IEventRestrictions>(service<ISelection>().get());
    ASSERT_TRUE(asked);
    const auto answers = [&] {
        return std::vector<int>{asked->restriction8(event(1).get()), asked->restriction5(event(1).get()),
                                asked->restriction3(event(1).get()), asked->restriction4(event(1).get())};
    };
    EXPECT_EQ(answers(), (std::vector<int>{0, 0, 0, 0}));
    ASSERT_EQ(host().restrictEvent(1, Restrictions::kEffects | Restrictions::kTransposed), "");
    EXPECT_EQ(answers(), (std::vector<int>{1, 0, 0, 1}));
    ASSERT_EQ(host().restrictEvent(1, Restrictions::kEnvelopes | Restrictions::kStretched), "");
    EXPECT_EQ(answers(), (std::vector<int>{0, 1, 1, 0}));
}

TEST_F(ServicesTest, ThePoolTakesAClipOnce) {
    makeProject({makeSound("a.wav", 10)});
    IPool* const pool = host().project()->pool();
    const auto part = queryFor<IFolderNode>(event(1)->audioPart());
    EXPECT_EQ(pool->add(part.get(), 0), kResultOk);
    EXPECT_EQ(host().project()->ownPool().parts().size(), 1U);
    EXPECT_EQ(pool->add(nullptr, 0), kInvalidArgument);
}

TEST_F(ServicesTest, TheTimelineKnowsItemsByTheirNumbers) {
    makeProject({makeSound("a.wav", 2000), makeSound("b.wav", 3000)});
    double start = -1;
    double end = -1;
    host().project()->root()->itemRange(2, &start, &end);
    EXPECT_EQ(start, 2);
    EXPECT_EQ(end, 5);
    host().project()->root()->itemRange(3, &start, &end);
    EXPECT_EQ(start, 2);
    start = -1;
    host().project()->root()->itemStart(1, &start);
    EXPECT_EQ(start, 0);
}

} // namespace
} // namespace tessera::host
