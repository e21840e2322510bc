#include "host/program/HostSettings.h"

#include "appservices/defaults/FDefaultPool.h"
#include "appservices/defaults/FDefaults.h"

#include <gtest/gtest.h>
#include <limits>

namespace tessera::host {
namespace {

using Paths = std::vector<std::string>;

class HostSettingsTest : public ::testing::Test {
protected:
    const FRefPtr<FDefaultPool> pool_ = FRefPtr<FDefaultPool>::adopt(new FDefaultPool);
    HostSettings settings_{*pool_};
};

TEST_F(HostSettingsTest, TheNewestProjectStandsFirst) {
    EXPECT_EQ(settings_.recentProjects(), Paths{});
    settings_.noteProject("/a");
    settings_.noteProject("/größer");
    settings_.noteProject("/c");
    EXPECT_EQ(settings_.recentProjects(), (Paths{"/c", "/größer", "/a"}));
}

TEST_F(HostSettingsTest, AProjectThatIsUsedAgainMovesToTheFront) {
    for (const char* path : {"/a", "/b", "/c", "/a"}) {
        settings_.noteProject(path);
    }
    EXPECT_EQ(settings_.recentProjects(), (Paths{"/a", "/c", "/b"}));
}

TEST_F(HostSettingsTest, OnlyTheLastTenAreKept) {
    for (int number = 0; number < 12; ++number) {
        settings_.noteProject("/" + std::to_string(number));
    }
    const Paths paths = settings_.recentProjects();
    ASSERT_EQ(paths.size(), HostSettings::kMostProjects);
    EXPECT_EQ(paths.front(), "/11");
    EXPECT_EQ(paths.back(), "/2");
}

TEST_F(HostSettingsTest, WhatCannotBeStoredIsPassedOver) {
    settings_.noteProject("/a");
    settings_.noteProject("/\xff");
    settings_.noteProject("/" + std::string(2000, '&'));
    EXPECT_EQ(settings_.recentProjects(), Paths{"/a"});
}

TEST_F(HostSettingsTest, ItWaitsAMinuteUnlessItIsTold) {
    EXPECT_EQ(settings_.waitSeconds(), 60);
    EXPECT_TRUE(settings_.setWaitSeconds(2.5));
    EXPECT_EQ(settings_.waitSeconds(), 2.5);
    EXPECT_TRUE(settings_.setWaitSeconds(0));
    EXPECT_EQ(settings_.waitSeconds(), 0);
    EXPECT_TRUE(settings_.setWaitSeconds(HostSettings::kLongestWait));
}

TEST_F(HostSettingsTest, NobodyWaitsLongerThanADay) {
    ASSERT_TRUE(settings_.setWaitSeconds(3));
    for (const double seconds : {-1.0, 86'401.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(settings_.setWaitSeconds(seconds)) << seconds;
        EXPECT_EQ(settings_.waitSeconds(), 3);
    }
}

TEST_F(HostSettingsTest, NonsenseInTheSettingsCountsAsMissing) {
    pool_->setFloat("Wait", "Seconds", -5);
    EXPECT_EQ(settings_.waitSeconds(), 60);
    pool_->setString("Wait", "Seconds", "soon");
    EXPECT_EQ(settings_.waitSeconds(), 60);
    pool_->setInt("Projects", "1", 7);
    pool_->setString("Projects", "2", "");
    pool_->setString("Projects", "3", "/a");
    EXPECT_EQ(settings_.recentProjects(), Paths{"/a"});
}

} // namespace
} // namespace tessera::host
