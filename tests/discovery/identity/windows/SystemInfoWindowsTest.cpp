#include "discovery/identity/SystemInfo.h"

#include "platform/windows/WideText.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace tessera {
namespace {

TEST(SystemInfoWindows, NamesAreTheOnesThatTheSystemTells) {
    wchar_t name[256] = {};
    DWORD units = 256;
    ASSERT_TRUE(GetUserNameW(name, &units));
    EXPECT_EQ(platform::userName(), platform::utf8Of(name));
    EXPECT_FALSE(platform::userName().empty());
    units = 256;
    ASSERT_TRUE(GetComputerNameW(name, &units));
    EXPECT_EQ(platform::computerName(), platform::utf8Of(name));
}

TEST(SystemInfoWindows, VersionIsTheOneThatTheSystemTellsThisProgram) {
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = 276;
    ASSERT_TRUE(GetVersionExW(&version));
    EXPECT_EQ(systemInfo().osMajor, version.dwMajorVersion);
    EXPECT_EQ(systemInfo().osMinor, version.dwMinorVersion);
    EXPECT_EQ(systemInfo().osBuild, version.dwBuildNumber);
    EXPECT_GE(systemInfo().osMajor, 6u);
}

TEST(SystemInfoWindows, IsOfThisFamily) {
    EXPECT_EQ(systemInfo().platform, "Win64");
    EXPECT_EQ(systemInfo().platformKind, 2);
    EXPECT_TRUE(systemInfo().osName.starts_with("Windows")) << systemInfo().osName;
}

} // namespace
} // namespace tessera
