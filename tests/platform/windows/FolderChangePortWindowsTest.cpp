#include "platform/FolderChangePort.h"

#include "platform/FolderChangePortFixture.h"
#include "support/windows/OpenHandles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tessera::test {
namespace {

namespace fs = std::filesystem;
using platform::FolderChange;
using testing_support::expectNoHandleLeftBy;
using testing_support::ScratchFolder;

class FolderChangePortWindowsTest : public FolderChangePortFixture {};

TEST_F(FolderChangePortWindowsTest, NamesOutsideTheCodePageArriveInUtf8) {
    fs::create_directory(scratch_.path() / u8"\u00e4\u65e5\U0001f3b5");
    ASSERT_EQ(take(), FolderChangePort::Read::data);
    EXPECT_THAT(changes_, testing::ElementsAre(FolderChange{1, "\xc3\xa4\xe6\x97\xa5\xf0\x9f\x8e\xb5"}));
}

TEST_F(FolderChangePortWindowsTest, AFolderOfSuchANameIsWatched) {
    const fs::path folder = scratch_.path() / u8"\u00e4\u65e5\U0001f3b5";
    fs::create_directory(folder);
    auto port = FolderChangePort::create();
    EXPECT_TRUE(port->open(kKey, folder.string()));
}

TEST_F(FolderChangePortWindowsTest, WhatIsWatchedCanBeRenamedAndDeletedByOthers) {
    const fs::path folder = scratch_ / "watched";
    fs::create_directory(folder);
    auto port = FolderChangePort::create();
    ASSERT_TRUE(port->open(8, folder.string()));
    fs::create_directory(folder / "inside");
    fs::rename(folder / "inside", folder / "renamed");
    fs::remove(folder / "renamed");
    std::error_code error;
    EXPECT_TRUE(fs::remove(folder, error)) << error.message();
}

TEST_F(FolderChangePortWindowsTest, LeavesNoHandleBehind) {
    const auto useOnce = [this] {
        auto port = FolderChangePort::create();
        port->open(8, scratch_.path().string());
        port->open(9, (scratch_ / "nowhere").string());
        FolderChangePort::Key key = 0;
        port->close(8);
        port->wait(key);
        port->take(key, changes_);
        port->open(10, scratch_.path().string());
    };
    expectNoHandleLeftBy(useOnce);
}

} // namespace
} // namespace tessera::test
