#include "host/HostFixture.h"

#include "appservices/defaults/FGlobalDefaultPool.h"
#include "host/program/ScriptCommands.h"

#include <filesystem>

namespace tessera::host {
namespace {

class SettingCommandsTest : public HostFixture {
protected:
    // All hosts of a process have their settings in common.
    SettingCommandsTest() {
        FGlobalDefaultPool::getInstance()->removeGroup("Projects");
        FGlobalDefaultPool::getInstance()->removeGroup("Wait");
    }

    Complaint run(const std::string& line) { return script_.run(line); }
    std::string told(const std::string& line) {
        const std::size_t before = output().size();
        EXPECT_EQ(run(line), "");
        return output().substr(before);
    }
    // Its project file.
    std::string makeProjectIn(const std::string& name) {
        EXPECT_EQ(run("new \"" + path(name) + "\""), "");
        EXPECT_EQ(run("save"), "");
        EXPECT_EQ(run("close"), "");
        return path(name + "/" + name + ".tesxproject");
    }

    ScriptCommands script_{host()};
};

TEST_F(SettingCommandsTest, RecentListsTheProjectsTheNewestFirst) {
    EXPECT_EQ(told("recent"), "no project has been used so far\n");
    const std::string first = makeProjectIn("first");
    const std::string second = makeProjectIn("second");
    EXPECT_EQ(told("recent"), second + "\n" + first + "\n");
    EXPECT_EQ(run("open \"" + first + "\""), "");
    EXPECT_EQ(told("recent"), first + "\n" + second + "\n");
    std::filesystem::remove(second);
    EXPECT_EQ(told("recent"), first + "\n" + second + " (isn't there any more)\n");
}

TEST_F(SettingCommandsTest, AProjectThatCannotBeOpenedIsNotRemembered) {
    EXPECT_NE(run("open \"" + path("missing.tesxproject") + "\""), "");
    EXPECT_EQ(told("recent"), "no project has been used so far\n");
}

TEST_F(SettingCommandsTest, OpenWithoutAWordOpensTheNewestThatIsStillThere) {
    EXPECT_EQ(run("open"), "none of the projects used last is there any more; use: open FILE");
    const std::string first = makeProjectIn("first");
    const std::string second = makeProjectIn("second");
    EXPECT_EQ(run("open"), "");
    EXPECT_EQ(host().project()->filePath(), second);
    EXPECT_EQ(run("close"), "");
    std::filesystem::remove(second);
    EXPECT_EQ(run("open"), "");
    EXPECT_EQ(host().project()->filePath(), first);
}

TEST_F(SettingCommandsTest, TheTimeToWaitCanBeSet) {
    EXPECT_EQ(told("settings"), "wait 60.000  seconds until the command wait gives up, if it isn't told\n");
    makeProject({makeSound("a.wav", 100)});
    EXPECT_EQ(run("set wait 0.01"), "");
    EXPECT_EQ(told("settings"), "wait 0.010  seconds until the command wait gives up, if it isn't told\n");
    EXPECT_NE(run("wait").find("didn't come back within 0.010 s"), std::string::npos);
}

TEST_F(SettingCommandsTest, WhatIsNoSettingIsTold) {
    EXPECT_EQ(run("set colour 3"), "there is no setting \"colour\"; expected wait");
    for (const char* value : {"soon", "-1", "86401", "nan"}) {
        EXPECT_EQ(run(std::string("set wait ") + value),
                  std::string("\"") + value + "\" is no time to wait; expected seconds from 0 to 86400");
    }
    EXPECT_EQ(host().settings().waitSeconds(), 60);
}

TEST_F(SettingCommandsTest, LanguageTellsWhichOneIsSpoken) {
    EXPECT_EQ(told("language"), "language us (English); there are: us\n");
    EXPECT_EQ(run("language fr"), "there is no language \"fr\"; there are: us");
}

} // namespace
} // namespace tessera::host
