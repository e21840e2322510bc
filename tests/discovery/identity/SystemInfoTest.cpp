#include "discovery/identity/SystemInfo.h"

#include "discovery/identity/SystemInfoTexts.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera {
namespace {

platform::OperatingSystem windows(std::uint32_t major, std::uint32_t minor) {
    return {platform::SystemFamily::windows, major, minor, 7};
}

std::string nameOf(const platform::OperatingSystem& system) {
    return describeSystem("", "", system).osName;
}

TEST(SystemInfo, WindowsIsNamedByItsVersion) {
    EXPECT_EQ(nameOf(windows(6, 0)), "Windows Vista");
    EXPECT_EQ(nameOf(windows(6, 1)), "Windows 7");
    EXPECT_EQ(nameOf(windows(6, 2)), "Windows 8");
    EXPECT_EQ(nameOf(windows(6, 3)), "Windows");
    EXPECT_EQ(nameOf(windows(5, 1)), "Windows");
    EXPECT_EQ(nameOf(windows(10, 0)), "Windows");
}

TEST(SystemInfo, TellsThePlatformAndItsKind) {
    const SystemInfo onWindows = describeSystem("", "", windows(10, 0));
    EXPECT_EQ(onWindows.platform, "Win64");
    EXPECT_EQ(onWindows.platformKind, 2);
    const SystemInfo onLinux = describeSystem("", "", {platform::SystemFamily::linux, 6, 1, 0});
    EXPECT_EQ(onLinux.platform, "Linux64");
    EXPECT_EQ(onLinux.platformKind, 3);
    EXPECT_EQ(onLinux.osName, "Linux");
}

TEST(SystemInfo, KeepsNamesAndNumbersAsTheyWereTold) {
    const SystemInfo info = describeSystem("J\xC3\xBCrgen", "studio", {platform::SystemFamily::linux, 6, 1, 25});
    EXPECT_EQ(info.userName, "J\xC3\xBCrgen");
    EXPECT_EQ(info.computerName, "studio");
    EXPECT_EQ(info.osMajor, 6u);
    EXPECT_EQ(info.osMinor, 1u);
    EXPECT_EQ(info.osBuild, 25u);
}

TEST(SystemInfo, AnUnknownUserHasAnEmptyName) {
    EXPECT_EQ(describeSystem("", "studio", {}).userName, "");
}

TEST(SystemInfo, ThisProcessHasOneRecord) {
    const SystemInfo& info = systemInfo();
    EXPECT_EQ(&info, &systemInfo());
    EXPECT_EQ(info.userName, platform::userName());
    EXPECT_FALSE(info.computerName.empty());
    EXPECT_FALSE(info.osName.empty());
    EXPECT_GT(info.osMajor, 0u);
}

TEST(SystemInfoTexts, KeepTheFourTextsAndTheThreeNumbers) {
    const SystemInfoTexts texts(describeSystem("J\xC3\xBCrgen", "studio", windows(6, 1)));
    EXPECT_EQ(texts.userName, FStringRef(u"J\u00FCrgen"));
    EXPECT_EQ(texts.computerName, FStringRef(u"studio"));
    EXPECT_EQ(texts.platform, FStringRef(u"Win64"));
    EXPECT_EQ(texts.osName, FStringRef(u"Windows 7"));
    EXPECT_EQ(texts.osMajor, 6u);
    EXPECT_EQ(texts.osMinor, 1u);
    EXPECT_EQ(texts.osBuild, 7u);
}

TEST(SystemInfoTexts, ThisProcessHasOneRecord) {
    EXPECT_EQ(&systemInfoTexts(), &systemInfoTexts());
    FString user;
    user.assignUtf8(systemInfo().userName.c_str());
    EXPECT_EQ(systemInfoTexts().userName.compare(user), 0);
    EXPECT_EQ(systemInfoTexts().osMajor, systemInfo().osMajor);
}

} // namespace
} // namespace tessera
