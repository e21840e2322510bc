#include "workflow/ProjectTracker.h"

#include "foundation/messages/UpdateHandler.h"
#include "support/host/FakeHost.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::FakeHost;
using test::FakeProject;
using test::makeFake;

class Dependent final : public FObject {
public:
    void update(IBaseUnknown* changed, std::int32_t message) override {
        subjects.push_back(changed);
        codes.push_back(message);
        if (onChange) {
            onChange(message);
        }
    }
    std::vector<IBaseUnknown*> subjects;
    std::vector<std::int32_t> codes;
    std::function<void(std::int32_t)> onChange;
};

using Codes = std::vector<std::int32_t>;

class ProjectTrackerTest : public testing::Test {
protected:
    ProjectTrackerTest() {
        UpdateHandler::getInstance(true);
        host_.projects->active = nullptr;
        tracker_ = FRefPtr<ProjectTracker>::adopt(new ProjectTracker(host_.services.get(), host_.projects.get()));
        tracker_->addDependent(&dependent_);
    }
    ~ProjectTrackerTest() override { tracker_->removeDependent(&dependent_); }

    FakeHost host_;
    Dependent dependent_;
    FRefPtr<ProjectTracker> tracker_;
};

TEST_F(ProjectTrackerTest, JoinsTheProjectListAndLeavesItAtItsEnd) {
    EXPECT_EQ(host_.projects->listeners.size(), 1u);
    EXPECT_EQ(tracker_->activeProject(), nullptr);
    EXPECT_EQ(tracker_->services(), host_.services.get());
    tracker_->removeDependent(&dependent_);
    tracker_.reset();
    EXPECT_TRUE(host_.projects->listeners.empty());
    tracker_ = FRefPtr<ProjectTracker>::adopt(new ProjectTracker(host_.services.get(), nullptr));
    EXPECT_EQ(tracker_->activeProject(), nullptr);
}

TEST_F(ProjectTrackerTest, ActivationIsToldAfterTheRoot) {
    host_.projects->activate(host_.project.get());
    EXPECT_EQ(tracker_->activeProject(), host_.project.get());
    EXPECT_EQ(dependent_.codes, (Codes{ProjectChange::root, ProjectChange::activated}));
    EXPECT_EQ(host_.project->listeners.size(), 1u);
    ASSERT_EQ(host_.registry->observers.size(), 1u);
    EXPECT_EQ(host_.registry->observers[0].first, host_.project->object());
}

TEST_F(ProjectTrackerTest, DeactivationIsToldWhileTheProjectIsStillActive) {
    host_.projects->activate(host_.project.get());
    dependent_.codes.clear();
    IProject* activeWhenTold = nullptr;
    dependent_.onChange = [&](std::int32_t code) {
        if (code == ProjectChange::deactivated) {
            activeWhenTold = tracker_->activeProject();
        }
    };
    host_.projects->deactivate();
    EXPECT_EQ(activeWhenTold, host_.project.get());
    EXPECT_EQ(dependent_.codes, (Codes{ProjectChange::deactivated, ProjectChange::root}));
    EXPECT_EQ(tracker_->activeProject(), nullptr);
    EXPECT_TRUE(host_.project->listeners.empty());
    EXPECT_TRUE(host_.registry->observers.empty());
}

TEST_F(ProjectTrackerTest, DeactivationWithoutAnActiveProjectDoesNothing) {
    host_.projects->deactivate();
    EXPECT_TRUE(dependent_.codes.empty());
}

TEST_F(ProjectTrackerTest, DeactivationOfAnotherProjectDoesNothing) {
    host_.projects->activate(host_.project.get());
    dependent_.codes.clear();
    const auto other = makeFake<FakeProject>(host_.store, host_.script, u"/projects/other");
    host_.projects->deactivate(other.get());
    EXPECT_TRUE(dependent_.codes.empty());
    EXPECT_EQ(tracker_->activeProject(), host_.project.get());
    host_.projects->deactivate(host_.project.get());
    EXPECT_EQ(tracker_->activeProject(), nullptr);
}

TEST_F(ProjectTrackerTest, AnUnchangedRootIsNotTold) {
    host_.projects->activate(host_.project.get());
    dependent_.codes.clear();
    host_.registry->tell(9);
    EXPECT_TRUE(dependent_.codes.empty());
}

TEST_F(ProjectTrackerTest, CodeOneIsPassedOn) {
    host_.projects->activate(host_.project.get());
    dependent_.codes.clear();
    host_.registry->tell(1);
    EXPECT_EQ(dependent_.codes, Codes{ProjectChange::object});
}

// The root is compared with the project's present one, which a fresh root() is; only a held root that isn't the
// project's any more counts as a change.
TEST_F(ProjectTrackerTest, ANewRootIsTold) {
    host_.projects->activate(host_.project.get());
    dependent_.codes.clear();
    host_.project->replaceRoot();
    host_.registry->tell(9);
    EXPECT_EQ(dependent_.codes, Codes{ProjectChange::root});
}

TEST_F(ProjectTrackerTest, WithoutAnObjectTestEveryRootIsNew) {
    host_.projects->activate(host_.project.get());
    dependent_.codes.clear();
    host_.services->remove<IObjectTest>();
    host_.registry->tell(9);
    EXPECT_EQ(dependent_.codes, Codes{ProjectChange::root});
}

TEST_F(ProjectTrackerTest, AChangeOfTheActiveProjectsContentIsTold) {
    host_.projects->activate(host_.project.get());
    dependent_.codes.clear();
    IProjectListener* listener = host_.project->listeners.at(0);
    const auto other = makeFake<FakeProject>(host_.store, host_.script, u"/projects/other");
    listener->projectChanged(other.get());
    EXPECT_TRUE(dependent_.codes.empty());
    listener->projectChanged(host_.project.get());
    EXPECT_EQ(dependent_.codes, Codes{ProjectChange::content});
}

TEST_F(ProjectTrackerTest, TellsItselfAsTheSubject) {
    host_.projects->activate(host_.project.get());
    ASSERT_FALSE(dependent_.subjects.empty());
    EXPECT_EQ(host_.objectTest->compare(dependent_.subjects[0], static_cast<FObject*>(tracker_.get())), 0);
}

// The host compares observers by identity, whichever of their tables it holds.
TEST_F(ProjectTrackerTest, AllItsTablesAreOneObject) {
    host_.projects->activate(host_.project.get());
    IBaseUnknown* self = static_cast<FObject*>(tracker_.get());
    EXPECT_EQ(host_.objectTest->compare(host_.projects->listeners.at(0), self), 0);
    EXPECT_EQ(host_.objectTest->compare(host_.project->listeners.at(0), self), 0);
    EXPECT_EQ(host_.objectTest->compare(host_.registry->observers.at(0).second, self), 0);
}

TEST_F(ProjectTrackerTest, LeavesAnActiveProjectAtItsEnd) {
    host_.projects->activate(host_.project.get());
    tracker_->removeDependent(&dependent_);
    tracker_.reset();
    EXPECT_TRUE(host_.project->listeners.empty());
    EXPECT_TRUE(host_.registry->observers.empty());
    tracker_ = FRefPtr<ProjectTracker>::adopt(new ProjectTracker(host_.services.get(), nullptr));
}

TEST_F(ProjectTrackerTest, AProjectThatIsActiveAlreadyIsTaken) {
    host_.projects->active = host_.project.get();
    const auto late = FRefPtr<ProjectTracker>::adopt(new ProjectTracker(host_.services.get(), host_.projects.get()));
    EXPECT_EQ(late->activeProject(), host_.project.get());
}

} // namespace
} // namespace tessera
