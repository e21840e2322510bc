#include "workflow/EventWatcher.h"

#include "foundation/messages/UpdateHandler.h"
#include "support/host/FakeHost.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::FakeEvent;
using test::FakeHost;
using test::FakePart;
using test::FakeProject;
using test::makeFake;

class EventWatcherTest : public testing::Test {
protected:
    EventWatcherTest() {
        UpdateHandler::getInstance(true);
        tracker_ = FRefPtr<ProjectTracker>::adopt(new ProjectTracker(host_.services.get(), host_.projects.get()));
        event_ = makeFake<FakeEvent>(host_.script, FRefPtr<FakePart>(), FakeEvent::Stretch());
        host_.track->add(event_.get());
        watcher_.attach(tracker_.get());
        watcher_.setCallback([this] { ++gone_; });
        watcher_.watch(event_.get());
    }

    FakeHost host_;
    FRefPtr<ProjectTracker> tracker_;
    FRefPtr<FakeEvent> event_;
    EventWatcher watcher_;
    int gone_ = 0;
};

TEST_F(EventWatcherTest, AProjectThatEndsOrBeginsTakesTheEventAway) {
    for (const std::int32_t code : {ProjectChange::activated, ProjectChange::deactivated}) {
        gone_ = 0;
        watcher_.watch(event_.get());
        tracker_->changed(code);
        EXPECT_EQ(gone_, 1) << code;
        EXPECT_EQ(watcher_.event(), nullptr);
        tracker_->changed(code);
        EXPECT_EQ(gone_, 1) << code;
    }
}

TEST_F(EventWatcherTest, OtherCodesAreIgnored) {
    event_->setState(2);
    event_->setParent(nullptr);
    for (const std::int32_t code : {0, 2, 3, 6, 7, 8}) {
        tracker_->changed(code);
    }
    EXPECT_EQ(gone_, 0);
}

TEST_F(EventWatcherTest, ARemovedEventThatIsInNoProjectIsGone) {
    event_->setState(2 | 8);
    event_->setParent(nullptr);
    tracker_->changed(1);
    EXPECT_EQ(gone_, 1);
    EXPECT_EQ(watcher_.event(), nullptr);
}

TEST_F(EventWatcherTest, AnEventWithoutStateIsThere) {
    event_->setParent(nullptr);
    tracker_->changed(1);
    EXPECT_EQ(gone_, 0);
}

TEST_F(EventWatcherTest, OnlyTheRemovedBitCounts) {
    event_->setState(1 | 4);
    event_->setParent(nullptr);
    tracker_->changed(1);
    EXPECT_EQ(gone_, 0);
    EXPECT_EQ(watcher_.event(), event_.get());
}

// A host in which the owner of the events and the project are one object, which its object test knows.
class OneObject final : public test::FakeObject<IObjectTest> {
public:
    FResult compare(IBaseUnknown*, IBaseUnknown*) override { return kResultOk; }
};

TEST_F(EventWatcherTest, AnEventThatTheProjectStillOwnsIsThere) {
    event_->setState(2);
    tracker_->changed(1);
    EXPECT_EQ(gone_, 1);
    watcher_.watch(event_.get());
    host_.services->offer<IObjectTest>("IObjectTest", makeFake<OneObject>());
    tracker_->changed(1);
    EXPECT_EQ(gone_, 1);
}

TEST_F(EventWatcherTest, WithoutACallbackTheEventIsLetGo) {
    watcher_.setCallback(nullptr);
    tracker_->changed(ProjectChange::deactivated);
    EXPECT_EQ(watcher_.event(), nullptr);
}

TEST_F(EventWatcherTest, AnotherSubjectIsIgnored) {
    const auto other = FRefPtr<ProjectTracker>::adopt(new ProjectTracker(host_.services.get(), host_.projects.get()));
    watcher_.update(static_cast<FObject*>(other.get()), ProjectChange::deactivated);
    EXPECT_EQ(gone_, 0);
    watcher_.update(static_cast<FObject*>(tracker_.get()), ProjectChange::deactivated);
    EXPECT_EQ(gone_, 1);
}

TEST_F(EventWatcherTest, AttachingElsewhereForgetsTheEventAndMovesOn) {
    const auto other = FRefPtr<ProjectTracker>::adopt(new ProjectTracker(host_.services.get(), host_.projects.get()));
    watcher_.attach(other.get());
    EXPECT_EQ(watcher_.event(), nullptr);
    watcher_.watch(event_.get());
    tracker_->changed(ProjectChange::deactivated);
    EXPECT_EQ(gone_, 0);
    other->changed(ProjectChange::deactivated);
    EXPECT_EQ(gone_, 1);
    watcher_.attach(nullptr);
    watcher_.watch(event_.get());
    other->changed(ProjectChange::deactivated);
    EXPECT_EQ(gone_, 1);
}

} // namespace
} // namespace tessera
