#include "host/HostFixture.h"

#include "host/GuestDoubles.h"
#include "shell/hostapi/IUndoTarget.h"

#include <stdexcept>

namespace tessera::host {
namespace {

class UndoStackTest : public HostFixture {
protected:
    UndoStackTest() {
        makeProject({makeSound("a.wav", 1000), makeSound("b.wav", 1000)});
        old_ = event(1);
        track_ = old_->track();
        added_ = FRefPtr<IProjectObject>::adopt(old_->duplicate(0));
    }

    // The history lets go of the step before the step goes.
    void TearDown() override { host().closeProject(); }

    IUndoStack& stack() { return host().undoStack(); }
    IProject* project() { return host().project().get(); }
    bool standsOnTrack(IProjectObject* event) { return event->parent() != nullptr; }

    // The exchange of one event for another, as a guest does it.
    void swap(IUndoStep* step) {
        const FRefPtr<IUndoTarget> target = queryFor<IUndoTarget>(&stack());
        ASSERT_EQ(target->addStep(step), kResultOk);
        ASSERT_EQ(stack().removeEvent(track_.get(), old_.get()), kResultOk);
        ASSERT_EQ(stack().addEvent(track_.get(), added_.get()), kResultOk);
        ASSERT_EQ(added_->place(project()->positionOf(old_.get()), 1, &stack()), kResultOk);
    }

    std::shared_ptr<Event> old_;
    std::shared_ptr<Track> track_;
    FRefPtr<IProjectObject> added_;
    RecordingStep step_;
};

TEST_F(UndoStackTest, ABlockIsUndoneAndRedoneAsOne) {
    swap(&step_);
    EXPECT_EQ(step_.calls, "");
    EXPECT_EQ(stack().commit(project(), "Edit in Tessera"), kResultOk);
    EXPECT_EQ(step_.calls, "perform ");
    EXPECT_FALSE(standsOnTrack(old_.get()));
    EXPECT_TRUE(standsOnTrack(added_.get()));
    EXPECT_EQ(host().undoStack().nameToUndo(), "Edit in Tessera");

    EXPECT_EQ(host().undo(), "");
    EXPECT_EQ(step_.calls, "perform undo ");
    EXPECT_TRUE(standsOnTrack(old_.get()));
    EXPECT_FALSE(standsOnTrack(added_.get()));
    EXPECT_EQ(host().project()->events().size(), 2U);

    EXPECT_EQ(host().redo(), "");
    EXPECT_EQ(step_.calls, "perform undo redo ");
    EXPECT_FALSE(standsOnTrack(old_.get()));
    EXPECT_TRUE(standsOnTrack(added_.get()));
}

TEST_F(UndoStackTest, ABlockThatNobodyCommitsIsTakenBack) {
    swap(&step_);
    host().turn();
    EXPECT_EQ(step_.calls, "");
    EXPECT_EQ(step_.references, 1U);
    EXPECT_TRUE(standsOnTrack(old_.get()));
    EXPECT_FALSE(standsOnTrack(added_.get()));
    EXPECT_EQ(host().undoStack().nameToUndo(), "");
    EXPECT_NE(output().find("taken back"), std::string::npos);
}

TEST_F(UndoStackTest, ANewBlockDropsWhatCouldBeRedone) {
    swap(&step_);
    stack().commit(project(), "first");
    ASSERT_EQ(host().undo(), "");
    ASSERT_EQ(host().moveEvent(1, 5), "");
    EXPECT_EQ(step_.references, 1U) << "the step of the dropped block is released";
    EXPECT_EQ(host().redo(), "there is nothing to redo");
    EXPECT_EQ(host().undo(), "");
    EXPECT_EQ(host().undo(), "there is nothing to undo");
}

TEST_F(UndoStackTest, WhatDoesntFitIsRefusedAndChangesNothing) {
    const auto otherTrack = host().project()->addTrack("Track 2");
    EXPECT_EQ(stack().removeEvent(otherTrack.get(), old_.get()), kResultFalse);
    EXPECT_EQ(stack().removeEvent(nullptr, old_.get()), kResultFalse);
    EXPECT_EQ(stack().removeEvent(track_.get(), added_.get()), kResultFalse);
    EXPECT_EQ(stack().addEvent(track_.get(), old_.get()), kResultFalse);
    EXPECT_EQ(stack().addEvent(track_.get(), nullptr), kResultFalse);
    EXPECT_EQ(stack().commit(nullptr, "name"), kInvalidArgument);
    EXPECT_EQ(stack().commit(project(), nullptr), kInvalidArgument);
    EXPECT_EQ(host().project()->events().size(), 2U);
}

TEST_F(UndoStackTest, AnotherProjectEmptiesTheHistory) {
    swap(&step_);
    stack().commit(project(), "first");
    ASSERT_EQ(host().closeProject(), "");
    EXPECT_EQ(step_.references, 1U);
    EXPECT_EQ(host().undo(), "there is nothing to undo");
}

TEST_F(UndoStackTest, AStepOfAGuestThatHasGoneIsNotCalled) {
    swap(&step_);
    stack().commit(project(), "first");
    host().undoStack().forgetGuest();
    EXPECT_EQ(step_.references, 1U);
    EXPECT_EQ(host().undo(), "");
    EXPECT_EQ(step_.calls, "perform ");
    EXPECT_TRUE(standsOnTrack(old_.get()));
}

TEST_F(UndoStackTest, AStepThatThrowsIsReportedAndTheBlockStands) {
    step_.onPerform = [] { throw std::runtime_error("broken step"); };
    swap(&step_);
    EXPECT_EQ(stack().commit(project(), "first"), kResultOk);
    ASSERT_EQ(misuses().size(), 1U);
    EXPECT_EQ(misuses().front(), "an exception came out of IUndoStep.perform: broken step");
    EXPECT_TRUE(standsOnTrack(added_.get()));
}

// A guest that watches the old event must have learned of the new one before anybody tells it that the old one has
// gone.
TEST_F(UndoStackTest, ListenersLearnOfAChangeAfterTheStepWasPerformed) {
    RecordingObserver observer;
    ASSERT_EQ(host().registry().addObserver(static_cast<IProject*>(host().project().get()), &observer), kResultOk);
    swap(&step_);
    stack().commit(project(), "first");
    EXPECT_TRUE(observer.codes.empty());
    host().turn();
    EXPECT_EQ(observer.codes, std::vector<std::int32_t>{1});
    host().turn();
    EXPECT_EQ(observer.codes.size(), 1U);
    host().registry().removeObserver(static_cast<IProject*>(host().project().get()), &observer);
}

} // namespace
} // namespace tessera::host
