#include "discovery/identity/ApplicationInfo.h"

#include "persistence/paths/SpecialFolders.h"
#include "platform/KnownFolders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace tessera {
namespace {

std::string utf8Of(const FStringRef& text) {
    FString narrow(text);
    narrow.toMultiByte(CodePage::utf8);
    return narrow.text8();
}

// The native form of a path of ours.
std::string nativeOf(const FNPath& path) {
    std::string text = utf8Of(path.getFullPath());
    for (char& c : text) {
        c = c == '\\' ? '/' : c;
    }
    return text;
}

TEST(ApplicationInfo, StartsUninitialized) {
    const ApplicationInfo info;
    EXPECT_EQ(utf8Of(info.productName()), "Uninitialized");
    EXPECT_EQ(utf8Of(info.versionText()), "Uninitialized");
    EXPECT_TRUE(info.subName().isEmpty());
    EXPECT_TRUE(info.applicationName().isEmpty());
    EXPECT_EQ(utf8Of(info.vendorFolderName()), "Marlgrove");
}

TEST(ApplicationInfo, TakesWhatTheProgramSays) {
    ApplicationInfo info;
    info.setProductName("Product");
    info.setVersionText("1.2.3");
    info.setSubName("Sub");
    info.setApplicationName("Name");
    info.setVendor("Vendor");
    EXPECT_EQ(utf8Of(info.productName()), "Product");
    EXPECT_EQ(utf8Of(info.versionText()), "1.2.3");
    EXPECT_EQ(utf8Of(info.subName()), "Sub");
    EXPECT_EQ(utf8Of(info.applicationName()), "Name");
    EXPECT_EQ(utf8Of(info.vendor()), "Vendor");
    EXPECT_EQ(utf8Of(info.vendorFolderName()), "Vendor");
}

TEST(ApplicationInfo, AnEmptyVendorHasTheDefaultFolder) {
    ApplicationInfo info;
    info.setVendor("");
    EXPECT_TRUE(info.vendor().isEmpty());
    EXPECT_EQ(utf8Of(info.vendorFolderName()), "Marlgrove");
}

TEST(ApplicationInfo, TheModuleIsTheFileThatHoldsTheCode) {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    const ApplicationInfo info;
    EXPECT_EQ(utf8Of(info.moduleName().getFullPath()), program.filename().string());
    EXPECT_EQ(nativeOf(info.moduleFolder()), program.parent_path().string());
    EXPECT_TRUE(info.moduleFolder().isFolder());
}

TEST(ApplicationInfo, TheUsersFolderFollowsVendorAndName) {
    const std::string config = std::getenv("XDG_CONFIG_HOME");
    ApplicationInfo info;
    EXPECT_EQ(nativeOf(info.userDataFolder()), config + "/Marlgrove");
    info.setApplicationName("Cut: 3/4?");
    EXPECT_EQ(nativeOf(info.userDataFolder()), config + "/Marlgrove/Cut_ 3_4_");
    EXPECT_EQ(utf8Of(info.applicationName()), "Cut: 3/4?");
    info.setVendor("Vendor");
    EXPECT_EQ(nativeOf(info.userDataFolder()), config + "/Vendor/Cut_ 3_4_");
    EXPECT_TRUE(info.userDataFolder().isFolder());
}

TEST(ApplicationInfo, TheSharedFolderFollowsTheVendor) {
    ApplicationInfo info;
    std::string common = utf8Of(FStringRef(platform::knownFolder(platform::KnownFolder::commonFiles)->c_str()));
    std::replace(common.begin(), common.end(), '\\', '/');
    EXPECT_EQ(nativeOf(info.sharedFilesFolder()), common + "/Marlgrove");
    info.setVendor("Vendor");
    EXPECT_EQ(nativeOf(info.sharedFilesFolder()), common + "/Vendor");
}

TEST(ApplicationInfo, AnswersForTheProgramsFolders) {
    ApplicationInfo info;
    EXPECT_EQ(info.folder(ApplicationFolder::userData), &info.userDataFolder());
    EXPECT_EQ(info.folder(ApplicationFolder::module), &info.moduleFolder());
    EXPECT_EQ(info.folder(static_cast<ApplicationFolder>(2)), nullptr);
}

TEST(ApplicationInfo, IsWhatPathsAsk) {
    ASSERT_NE(applicationFoldersSource, nullptr);
    EXPECT_EQ(applicationFoldersSource(), &applicationInfo());
    EXPECT_EQ(&applicationInfo(), &applicationInfo());
    EXPECT_EQ(utf8Of(vendorName()), "Marlgrove");
    const FNPath* module = userFolder(UserFolder::application);
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(nativeOf(*module), nativeOf(applicationInfo().moduleFolder()));
}

} // namespace
} // namespace tessera
