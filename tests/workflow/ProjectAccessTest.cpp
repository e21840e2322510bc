#include "workflow/ProjectAccess.h"

#include "shell/hostapi/IProjectOpener.h"
#include "support/host/FakeHost.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::FakeHost;
using test::FakeObject;
using test::FakeTimeValue;
using test::makeFake;

class FakeOpener final : public FakeObject<IProjectOpener> {
public:
    FResult open(IHostFile* file, std::int64_t unused) override {
        char16_t path[kHostPathUnits] = {};
        file->path(path);
        opened.emplace_back(path);
        unusedWord = unused;
        return result;
    }
    std::vector<std::u16string> opened;
    std::int64_t unusedWord = -1;
    FResult result = kResultOk;
};

using Values = std::vector<std::pair<double, std::int32_t>>;

class ProjectAccessTest : public testing::Test {
protected:
    ProjectAccessTest() { ProjectAccess::instance().setContext(opener_.get()); }
    ~ProjectAccessTest() override { ProjectAccess::instance().setContext(nullptr); }

    FResult open(std::string_view path, double start, double length) {
        return ProjectAccess::instance().openProject(path, start, length);
    }

    FakeHost host_;
    FRefPtr<FakeOpener> opener_ = makeFake<FakeOpener>();
};

TEST_F(ProjectAccessTest, OpensLocatesAndSetsTheCycle) {
    EXPECT_EQ(open("/a/s\xC3\xB6ng.project", 2.5, 4), kResultOk);
    EXPECT_EQ(opener_->opened, std::vector<std::u16string>{u"/a/s\u00F6ng.project"});
    EXPECT_EQ(opener_->unusedWord, 0);
    EXPECT_EQ(host_.transport->located, std::vector<double>{2.5});
    EXPECT_EQ(host_.transport->left->values, (Values{{2.5, 1}}));
    EXPECT_EQ(host_.transport->right->values, (Values{{6.5, 1}}));
}

TEST_F(ProjectAccessTest, AFailedOpenStillLocatesAndGivesItsResult) {
    opener_->result = kResultFailure;
    EXPECT_EQ(open("/missing", 1, 2), kResultFailure);
    EXPECT_EQ(host_.transport->located, std::vector<double>{1});
    EXPECT_EQ(host_.transport->right->values, (Values{{3, 1}}));
}

TEST_F(ProjectAccessTest, WithoutAnOpenerTheResultIsOneAndTheRestHappens) {
    ProjectAccess::instance().setContext(nullptr);
    EXPECT_EQ(open("/a", 1, 2), kResultFalse);
    EXPECT_EQ(host_.transport->located, std::vector<double>{1});
}

TEST_F(ProjectAccessTest, ALengthOfZeroSetsBothEndsToTheStart) {
    open("/a", 3, 0);
    EXPECT_EQ(host_.transport->left->values, (Values{{3, 1}}));
    EXPECT_EQ(host_.transport->right->values, (Values{{3, 1}}));
}

TEST_F(ProjectAccessTest, WithoutFileObjectsNothingHappens) {
    host_.services->remove<IUrlFactory>();
    EXPECT_EQ(open("/a", 1, 2), kResultFalse);
    EXPECT_TRUE(opener_->opened.empty());
    EXPECT_TRUE(host_.transport->located.empty());
}

TEST_F(ProjectAccessTest, APathThatTheHostRefusesEndsIt) {
    host_.script.failAlways("file.setPath");
    EXPECT_EQ(open("/a", 1, 2), kInvalidArgument);
    EXPECT_TRUE(opener_->opened.empty());
    EXPECT_TRUE(host_.transport->located.empty());
}

TEST_F(ProjectAccessTest, AMissingParameterSetsNeitherEnd) {
    const auto right = host_.transport->right;
    host_.transport->right.reset();
    open("/a", 1, 2);
    EXPECT_TRUE(host_.transport->left->values.empty());
    host_.transport->right = right;
    host_.transport->left.reset();
    open("/a", 1, 2);
    EXPECT_TRUE(right->values.empty());
}

TEST_F(ProjectAccessTest, WithoutATransportTheProjectIsOpened) {
    host_.services->remove<ITransport>();
    EXPECT_EQ(open("/a", 1, 2), kResultOk);
    EXPECT_EQ(opener_->opened.size(), 1u);
}

} // namespace
} // namespace tessera
