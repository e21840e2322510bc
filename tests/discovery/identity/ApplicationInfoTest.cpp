#include "discovery/identity/ApplicationInfo.h"

#include "persistence/paths/SpecialFolders.h"
#include "platform/KnownFolders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

namespace tessera {
namespace {

std::string utf8Of(const FStringRef& text) {
    FString narrow(text);
    narrow.toMultiByte(CodePage::utf8);
    return narrow.text8();
}

// With "/" on every side.
std::string genericOf(const FStringRef& path) {
    std::string text = utf8Of(path);
    std::replace(text.begin(), text.end(), '\\', '/');
    return text;
}

std::string genericOf(const FNPath& path) {
    return genericOf(path.getFullPath());
}

std::string folderOf(platform::KnownFolder folder) {
    return genericOf(FStringRef(platform::knownFolder(folder)->c_str()));
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
    const std::filesystem::path program = OWN_FILE;
    const ApplicationInfo info;
    EXPECT_EQ(utf8Of(info.moduleName().getFullPath()), program.filename().string());
    EXPECT_TRUE(std::filesystem::equivalent(genericOf(info.moduleFolder()), program.parent_path()))
        << genericOf(info.moduleFolder());
    EXPECT_TRUE(info.moduleFolder().isFolder());
}

TEST(ApplicationInfo, TheUsersFolderFollowsVendorAndName) {
    const std::string config = folderOf(platform::KnownFolder::userData);
    ApplicationInfo info;
    EXPECT_EQ(genericOf(info.userDataFolder()), config + "/Marlgrove");
    info.setApplicationName("Cut: 3/4?");
    EXPECT_EQ(genericOf(info.userDataFolder()), config + "/Marlgrove/Cut_ 3_4_");
    EXPECT_EQ(utf8Of(info.applicationName()), "Cut: 3/4?");
    info.setVendor("Vendor");
    EXPECT_EQ(genericOf(info.userDataFolder()), config + "/Vendor/Cut_ 3_4_");
    EXPECT_TRUE(info.userDataFolder().isFolder());
}

TEST(ApplicationInfo, TheSharedFolderFollowsTheVendor) {
    ApplicationInfo info;
    const std::string common = folderOf(platform::KnownFolder::commonFiles);
    EXPECT_EQ(genericOf(info.sharedFilesFolder()), common + "/Marlgrove");
    info.setVendor("Vendor");
    EXPECT_EQ(genericOf(info.sharedFilesFolder()), common + "/Vendor");
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
    EXPECT_EQ(genericOf(*module), genericOf(applicationInfo().moduleFolder()));
}

} // namespace
} // namespace tessera
