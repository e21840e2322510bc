#include "platform/SmallFile.h"

#include "support/ScratchFolder.h"
#include "support/windows/OpenHandles.h"

#include <gtest/gtest.h>

#include <string_view>
#include <windows.h>

namespace tessera::platform {
namespace {

using testing_support::expectNoHandleLeftBy;
using testing_support::ScratchFolder;
using testing_support::slashTextOf;

TEST(SmallFileWindows, NamesOfDevicesAreNoFiles) {
    const ScratchFolder scratch;
    EXPECT_FALSE(readSmallFile("nul", 100));
    EXPECT_FALSE(writeSmallFile("nul", "text"));
    wchar_t meant[MAX_PATH] = {};
    ::GetFullPathNameW((scratch / "nul").c_str(), MAX_PATH, meant, nullptr);
    if (!std::wstring_view(meant).starts_with(L"\\\\.\\")) {
        GTEST_SKIP() << "in a folder it is a name like any other here";
    }
    EXPECT_FALSE(readSmallFile(slashTextOf(scratch / "nul"), 100));
    EXPECT_FALSE(writeSmallFile(slashTextOf(scratch / "nul"), "text"));
    EXPECT_EQ(scratch.entryCount(), 0u);
}

TEST(SmallFileWindows, WhoReadsMayKeepTheFileOpen) {
    const ScratchFolder scratch;
    scratch.write("file", "a longer text");
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE reader =
        ::CreateFileW((scratch / "file").c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_TRUE(writeSmallFile(slashTextOf(scratch / "file"), "new"));
    EXPECT_EQ(readSmallFile(slashTextOf(scratch / "file"), 100), "new");
    ::CloseHandle(reader);
    EXPECT_EQ(scratch.entryCount(), 1u);
}

TEST(SmallFileWindows, AFileThatSomebodyKeepsToHimselfIsLeftAlone) {
    const ScratchFolder scratch;
    scratch.write("file", "old");
    const HANDLE owner = ::CreateFileW((scratch / "file").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_FALSE(writeSmallFile(slashTextOf(scratch / "file"), "new"));
    EXPECT_FALSE(readSmallFile(slashTextOf(scratch / "file"), 100));
    ::CloseHandle(owner);
    EXPECT_EQ(scratch.read("file"), "old");
}

TEST(SmallFileWindows, LeavesNoHandleBehind) {
    const ScratchFolder scratch;
    const auto useOnce = [&] {
        for (const char* name : {"file", "nul", "missing/file"}) {
            writeSmallFile(slashTextOf(scratch / name), "text");
            readSmallFile(slashTextOf(scratch / name), 100);
        }
    };
    expectNoHandleLeftBy(useOnce);
}

} // namespace
} // namespace tessera::platform
