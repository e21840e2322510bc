#include "platform/DesktopOpener.h"

#include "support/Eventually.h"
#include "support/ScopedEnvironment.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace tessera::platform {
namespace {

namespace fs = std::filesystem;

// An opener of the desktop's name that notes what it is asked to open.
class DesktopOpenerLinuxTest : public testing::Test {
protected:
    DesktopOpenerLinuxTest() {
        const fs::path opener = scratch_.write("bin/xdg-open", "#!/bin/sh\nprintf '%s|%s' \"$#\" \"$1\" > '" +
                                                                   (scratch_ / "asked.part").string() + "'\nmv '" +
                                                                   (scratch_ / "asked.part").string() + "' '" +
                                                                   (scratch_ / "asked").string() + "'\n");
        fs::permissions(opener, fs::perms(0755));
    }

    // The number of arguments and the first one, as the opener saw them.
    std::string asked() {
        EXPECT_TRUE(testing_support::eventually([this] { return scratch_.has("asked"); }));
        return scratch_.read("asked");
    }

    testing_support::ScratchFolder scratch_;
    testing_support::ScopedEnvironment path_{"PATH", (scratch_ / "bin").string() + ":" + std::getenv("PATH")};
};

TEST_F(DesktopOpenerLinuxTest, OpensADocumentByItsPath) {
    EXPECT_TRUE(openDocument(u"\\home\\me\\My Song; \u00FC.wav"));
    EXPECT_EQ(asked(), "1|/home/me/My Song; \xC3\xBC.wav");
}

TEST_F(DesktopOpenerLinuxTest, ShowsAFileByOpeningItsFolder) {
    EXPECT_TRUE(showInFolder(u"\\home\\me\\song.wav"));
    EXPECT_EQ(asked(), "1|/home/me/");
}

TEST_F(DesktopOpenerLinuxTest, OpensAnAddress) {
    EXPECT_TRUE(openAddress("https://example.org/?a=b&c"));
    EXPECT_EQ(asked(), "1|https://example.org/?a=b&c");
}

TEST_F(DesktopOpenerLinuxTest, WhatCouldBeTakenForASwitchIsRefused) {
    EXPECT_FALSE(openAddress("--help"));
    EXPECT_FALSE(openAddress(""));
    EXPECT_FALSE(openDocument(u"-x"));
    EXPECT_FALSE(openDocument(u"relative.txt"));
    EXPECT_FALSE(openDocument(u""));
    EXPECT_FALSE(showInFolder(u"C:\\drive"));
}

TEST_F(DesktopOpenerLinuxTest, ADesktopWithoutAnOpenerOpensNothing) {
    const testing_support::ScopedEnvironment nowhere("PATH", (scratch_ / "empty").string());
    EXPECT_FALSE(openDocument(u"\\home\\me\\song.wav"));
}

} // namespace
} // namespace tessera::platform
