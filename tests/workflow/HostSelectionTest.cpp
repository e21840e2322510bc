#include "workflow/HostSelection.h"

#include "support/host/FakeHost.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::FakeEvent;
using test::FakeHost;
using test::FakeMidiPart;
using test::FakePart;
using test::makeFake;

class HostSelectionTest : public testing::Test {
protected:
    FRefPtr<FakeEvent> event() { return makeFake<FakeEvent>(host_.script, FRefPtr<FakePart>(), FakeEvent::Stretch()); }

    FakeHost host_;
};

TEST_F(HostSelectionTest, ListsTheEventsInTheHostsOrderWithTheirScope) {
    const auto first = event();
    const auto second = event();
    host_.selection->select(1, first.get(), 11);
    host_.selection->select(1, second.get(), 12);
    const auto events = HostSelection(host_.services.get()).selectedEvents();
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].object.get(), first.get());
    EXPECT_EQ(events[0].scope, 11u);
    EXPECT_EQ(events[1].object.get(), second.get());
    EXPECT_EQ(events[1].scope, 12u);
    EXPECT_EQ(host_.script.calls().front(), "selection.selectKind(77, 1)");
}

TEST_F(HostSelectionTest, RangesAreTheNinthKind) {
    const auto item = event();
    host_.selection->select(9, item.get(), 5);
    const HostSelection selection(host_.services.get());
    EXPECT_TRUE(selection.selectedEvents().empty());
    ASSERT_EQ(selection.selectedRanges().size(), 1u);
    EXPECT_EQ(host_.script.calls().back(), "selection.selectKind(77, 9)");
}

TEST_F(HostSelectionTest, LeavesOutWhatIsNoAudioEvent) {
    const auto audio = event();
    const auto midi = makeFake<FakeMidiPart>();
    host_.selection->select(1, midi.get());
    host_.selection->select(1, nullptr);
    host_.selection->select(1, audio.get());
    const auto events = HostSelection(host_.services.get()).selectedEvents();
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].object.get(), audio.get());
}

TEST_F(HostSelectionTest, AFailedItemIsPassedOver) {
    const auto audio = event();
    host_.selection->select(1, audio.get());
    host_.selection->select(1, audio.get());
    const HostSelection selection(host_.services.get());
    host_.script.clear();
    // Step 0 selects the kind, step 1 is the first item.
    host_.script.failStep(1);
    EXPECT_EQ(selection.selectedEvents().size(), 1u);
}

TEST_F(HostSelectionTest, AKindThatTheHostRefusesIsEmpty) {
    host_.selection->select(1, event().get());
    host_.script.failAlways("selection.selectKind");
    EXPECT_TRUE(HostSelection(host_.services.get()).selectedEvents().empty());
}

TEST_F(HostSelectionTest, WithoutASelectionEveryAnswerIsEmpty) {
    host_.services->remove<ISelection>();
    const HostSelection selection(host_.services.get());
    EXPECT_TRUE(selection.selectedEvents().empty());
    EXPECT_TRUE(selection.selectedRanges().empty());
    EXPECT_FALSE(selection.firstSelectedEvent().object);
    EXPECT_FALSE(selection.isRestricted(event().get()));
    EXPECT_TRUE(HostSelection(nullptr).selectedEvents().empty());
}

TEST_F(HostSelectionTest, FirstSelectedEventIsTheFirst) {
    const auto first = event();
    host_.selection->select(1, first.get(), 4);
    host_.selection->select(1, event().get(), 5);
    const SelectedItem item = HostSelection(host_.services.get()).firstSelectedEvent();
    EXPECT_EQ(item.object.get(), first.get());
    EXPECT_EQ(item.scope, 4u);
}

TEST_F(HostSelectionTest, AsksTheFourRestrictionsInTheirOrder) {
    const HostSelection selection(host_.services.get());
    host_.script.clear();
    EXPECT_FALSE(selection.isRestricted(event().get()));
    EXPECT_EQ(host_.script.calls(),
              (std::vector<std::string>{"restriction8", "restriction5", "restriction3", "restriction4"}));
}

TEST_F(HostSelectionTest, TheFirstRestrictionThatHoldsEndsTheQuestions) {
    const HostSelection selection(host_.services.get());
    host_.selection->restrict(5);
    host_.script.clear();
    EXPECT_TRUE(selection.isRestricted(event().get()));
    EXPECT_EQ(host_.script.calls(), (std::vector<std::string>{"restriction8", "restriction5"}));
}

TEST_F(HostSelectionTest, EachRestrictionCounts) {
    for (const int slot : {8, 5, 3, 4}) {
        FakeHost host;
        host.selection->restrict(slot);
        EXPECT_TRUE(HostSelection(host.services.get()).isRestricted(event().get())) << slot;
    }
}

TEST_F(HostSelectionTest, WithoutRestrictionsNothingIsRestricted) {
    host_.selection->offerRestrictions(false);
    EXPECT_FALSE(HostSelection(host_.services.get()).isRestricted(event().get()));
}

TEST_F(HostSelectionTest, NoEventIsNotRestricted) {
    host_.selection->restrict(8);
    EXPECT_FALSE(HostSelection(host_.services.get()).isRestricted(nullptr));
}

} // namespace
} // namespace tessera
