#include "platform/DesktopFiles.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace tessera::platform {
namespace {

using testing_support::slashTextOf;

TEST(DesktopFilesWindows, AShortcutIsAShellLinkUnderANewName) {
    const testing_support::ScratchFolder scratch;
    scratch.write("\xCE\xA9 target", "x");
    const std::string target = slashTextOf(scratch / "\xCE\xA9 target");
    EXPECT_FALSE(createShortcut(target, slashTextOf(scratch / "short.lnk")));
    EXPECT_EQ(scratch.read("short.lnk").substr(0, 4), std::string("\x4C\0\0\0", 4));
    EXPECT_EQ(createShortcut(target, slashTextOf(scratch / "short.lnk")).value(), ERROR_FILE_EXISTS);
    EXPECT_TRUE(createShortcut(target, slashTextOf(scratch / "missing/short.lnk")));
    EXPECT_EQ(scratch.entryCount(), 2u);
}

TEST(DesktopFilesWindows, WhatGoesToTheTrashLeavesItsPlace) {
    const testing_support::ScratchFolder scratch;
    scratch.write("file", "x");
    const std::error_code error = moveToTrash(slashTextOf(scratch / "file"));
    if (error) {
        EXPECT_EQ(scratch.read("file"), "x") << "nothing is deleted instead";
        GTEST_SKIP() << "the desktop of this system moves nothing to its trash: " << error.value();
    }
    EXPECT_FALSE(scratch.has("file"));
}

TEST(DesktopFilesWindows, WhatIsntThereGoesNowhere) {
    const testing_support::ScratchFolder scratch;
    EXPECT_TRUE(moveToTrash(slashTextOf(scratch / "missing")));
}

} // namespace
} // namespace tessera::platform
