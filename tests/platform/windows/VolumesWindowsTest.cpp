#include "platform/Volumes.h"

#include "platform/windows/WideText.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <windows.h>

namespace tessera::platform {
namespace {

TEST(VolumesWindows, EachDriveIsARoot) {
    const DWORD drives = ::GetLogicalDrives();
    std::vector<std::string> expected;
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        if ((drives >> (letter - 'A') & 1) != 0) {
            expected.push_back(std::string(1, letter) + ":/");
        }
    }
    EXPECT_EQ(volumeRoots(), expected);
}

TEST(VolumesWindows, AVolumeIsWhatTheSystemTellsOfIt) {
    const testing_support::ScratchFolder scratch;
    const auto info = volumeInfo(testing_support::slashTextOf(scratch.path()));
    ASSERT_TRUE(info);
    const std::wstring root = scratch.path().root_path().wstring();
    EXPECT_EQ(info->root, testing_support::slashTextOf(scratch.path().root_path()));
    ASSERT_EQ(::GetDriveTypeW(root.c_str()), DWORD{DRIVE_FIXED});
    EXPECT_EQ(info->kind, VolumeKind::fixed);
    wchar_t label[64] = {};
    wchar_t format[64] = {};
    DWORD flags = 0;
    ASSERT_TRUE(::GetVolumeInformationW(root.c_str(), label, 64, nullptr, nullptr, &flags, format, 64));
    EXPECT_EQ(info->label, utf8Of(std::wstring_view(label)));
    EXPECT_EQ(info->fileSystem, utf8Of(std::wstring_view(format)));
    EXPECT_EQ(info->readOnly, (flags & FILE_READ_ONLY_VOLUME) != 0);
    ULARGE_INTEGER total = {};
    ULARGE_INTEGER available = {};
    ASSERT_TRUE(::GetDiskFreeSpaceExW(root.c_str(), &available, &total, nullptr));
    // The two calls round to their own blocks, and others write meanwhile.
    EXPECT_NEAR(static_cast<double>(info->totalBytes), static_cast<double>(total.QuadPart), 1 << 20);
    EXPECT_NEAR(static_cast<double>(info->availableBytes), static_cast<double>(available.QuadPart), 1 << 28);
}

// An empty drive would bring up a box, which nobody may be there to answer.
TEST(VolumesWindows, QuestionsLeaveTheThreadsErrorModeAlone) {
    DWORD before = 0;
    ::SetThreadErrorMode(SEM_NOOPENFILEERRORBOX, &before);
    EXPECT_FALSE(volumeInfo("/no/such/folder"));
    EXPECT_TRUE(volumeInfo("C:/"));
    EXPECT_EQ(::GetThreadErrorMode(), DWORD{SEM_NOOPENFILEERRORBOX});
    ::SetThreadErrorMode(before, nullptr);
}

TEST(VolumesWindows, ADriveThatIsntThereIsNoVolume) {
    const auto free = static_cast<char>('A' + std::countr_one(static_cast<std::uint32_t>(::GetLogicalDrives())));
    ASSERT_LE(free, 'Z');
    EXPECT_FALSE(volumeInfo(std::string(1, free) + ":/"));
    EXPECT_FALSE(volumeInfo(""));
}

} // namespace
} // namespace tessera::platform
