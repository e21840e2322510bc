#include "persistence/paths/SpecialFolders.h"

#include "persistence/paths/FNPath.h"
#include "persistence/paths/IApplicationFolders.h"
#include "platform/KnownFolders.h"
#include "platform/NativePath.h"
#include "platform/TemporaryFolder.h"
#include "support/ScratchFolder.h"
#include "tests/persistence/paths/TextOf.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tessera {
namespace {

namespace fs = std::filesystem;

class KnownApplication final : public IApplicationFolders {
public:
    const FNPath* folder(ApplicationFolder code) override {
        return code == ApplicationFolder::userData ? &userData : &module;
    }
    const FString& vendor() override { return vendorText; }

    FNPath userData{u"\\app\\data", PathKind::folder};
    FNPath module{u"\\app\\module", PathKind::folder};
    FString vendorText;
};

class SpecialFolders : public testing::Test {
protected:
    SpecialFolders() { current = &application; }
    ~SpecialFolders() override { applicationFoldersSource = nullptr; }

    void useApplication() {
        applicationFoldersSource = []() -> IApplicationFolders* { return current; };
    }

    KnownApplication application;
    static KnownApplication* current;
};

KnownApplication* SpecialFolders::current = nullptr;

std::u16string known(platform::KnownFolder folder) {
    return platform::knownFolder(folder).value_or(u"none");
}

TEST_F(SpecialFolders, LookUpsAreSharedFolders) {
    const FNPath* folder = userFolder(UserFolder::applicationData);
    ASSERT_NE(folder, nullptr);
    EXPECT_EQ(folder, userFolder(UserFolder::applicationData));
    EXPECT_TRUE(folder->isFolder());
    EXPECT_EQ(fullOf(*folder), known(platform::KnownFolder::userData));
    EXPECT_EQ(fullOf(*userFolder(UserFolder::commonApplicationData)), known(platform::KnownFolder::commonData));
}

TEST_F(SpecialFolders, EachProgramFolderHasItsSource) {
    struct Row {
        ProgramFolder folder;
        platform::KnownFolder source;
    };
    const Row rows[] = {
        {ProgramFolder::commonFiles, platform::KnownFolder::commonFilesOther},
        {ProgramFolder::programFilesOrCommon, platform::KnownFolder::programFilesOrCommon},
        {ProgramFolder::commonFilesOther, platform::KnownFolder::commonFiles},
        {ProgramFolder::localApplicationData, platform::KnownFolder::localData},
        {ProgramFolder::programFilesOther, platform::KnownFolder::programFilesOther},
        {ProgramFolder::programFilesNative, platform::KnownFolder::programFilesNative},
        {ProgramFolder::programFiles, platform::KnownFolder::programFiles},
    };
    for (const Row& row : rows) {
        const FNPath* folder = programFolder(row.folder);
        ASSERT_NE(folder, nullptr) << static_cast<int>(row.folder);
        EXPECT_EQ(fullOf(*folder), known(row.source)) << static_cast<int>(row.folder);
    }
    EXPECT_EQ(fullOf(*programFolder(ProgramFolder::vendorCommonFiles)),
              fullOf(*programFolder(ProgramFolder::commonFiles)) + u"\\Marlgrove");
    EXPECT_EQ(programFolder(static_cast<ProgramFolder>(8)), nullptr);
    EXPECT_EQ(programFolder(static_cast<ProgramFolder>(-1)), nullptr);
}

TEST_F(SpecialFolders, KnownFoldersAreTheSystemsOrNull) {
    const KnownFolder folders[] = {KnownFolder::documents, KnownFolder::profile, KnownFolder::pictures,
                                   KnownFolder::music, KnownFolder::videos};
    const platform::KnownFolder sources[] = {platform::KnownFolder::documents, platform::KnownFolder::profile,
                                             platform::KnownFolder::pictures, platform::KnownFolder::music,
                                             platform::KnownFolder::videos};
    for (std::size_t i = 0; i < std::size(folders); ++i) {
        const FNPath* folder = knownFolder(folders[i]);
        EXPECT_EQ(folder != nullptr ? fullOf(*folder) : u"none", known(sources[i])) << i;
    }
    EXPECT_EQ(knownFolder(static_cast<KnownFolder>(99)), nullptr);
}

TEST_F(SpecialFolders, ApplicationFoldersAreTheServices) {
    EXPECT_EQ(userFolder(UserFolder::application), nullptr);
    EXPECT_EQ(pathFolder(PathFolder::userData), nullptr);
    useApplication();
    EXPECT_EQ(userFolder(UserFolder::application), &application.module);
    EXPECT_EQ(pathFolder(PathFolder::userData), &application.userData);
    EXPECT_EQ(pathFolder(PathFolder::module), &application.module);
}

TEST_F(SpecialFolders, VendorIsTheServicesOrTheDefault) {
    EXPECT_EQ(text(vendorName()), u"Marlgrove");
    useApplication();
    EXPECT_EQ(text(vendorName()), u"Marlgrove");
    application.vendorText = u"Other";
    EXPECT_EQ(text(vendorName()), u"Other");
}

TEST_F(SpecialFolders, NameGoesIntoTheFolder) {
    const std::u16string temporary = *platform::fromNativePath(platform::temporaryFolder());
    const FNPath path(u"a.txt", PathFolder::temporary, PathKind::file);
    EXPECT_EQ(fullOf(path), temporary + u"\\a.txt");
    EXPECT_TRUE(path.isFile());
    useApplication();
    EXPECT_EQ(fullOf(FNPath(u"a", PathFolder::userData, PathKind::folder)), u"\\app\\data\\a");
    EXPECT_EQ(fullOf(FNPath(u"a", PathFolder::module, PathKind::folder)), u"\\app\\module\\a");
    EXPECT_EQ(fullOf(FNPath(u"a", PathFolder::system, PathKind::file)), known(platform::KnownFolder::system) + u"\\a");
}

TEST_F(SpecialFolders, OtherCodesLeaveTheFolderEmpty) {
    EXPECT_EQ(fullOf(FNPath(u"a", static_cast<PathFolder>(0), PathKind::file)), u"a");
    EXPECT_EQ(fullOf(FNPath(u"a", static_cast<PathFolder>(5), PathKind::file)), u"a");
    EXPECT_EQ(fullOf(FNPath(u"a", PathFolder::userData, PathKind::file, u"sub", true)), u"a");
}

TEST_F(SpecialFolders, MissingFoldersAreMadeIfAsked) {
    const fs::path base = fs::temp_directory_path() / "app" / "data";
    application.userData.set(base.u16string().c_str(), PathKind::folder);
    useApplication();
    FNPath(u"a", PathFolder::userData, PathKind::file);
    EXPECT_FALSE(fs::exists(base));
    FNPath(u"a", PathFolder::userData, PathKind::file, FStringRef(), true);
    EXPECT_TRUE(fs::is_directory(base));
    fs::remove_all(base);
    const FNPath path(u"a", PathFolder::userData, PathKind::file, u"sub\\inner");
    EXPECT_TRUE(fs::is_directory(base / "sub" / "inner"));
    EXPECT_FALSE(fs::exists(base / "sub" / "inner" / "a"));
    EXPECT_TRUE(fullOf(path).ends_with(u"\\data\\sub\\inner\\a"));
    fs::remove_all(base.parent_path());
}

TEST_F(SpecialFolders, PathStandsWhereItsFolderCanNotBeMade) {
    const testing_support::ScratchFolder scratch;
    const fs::path inFile = scratch.write("file", "") / "data";
    application.userData.set(inFile.u16string().c_str(), PathKind::folder);
    useApplication();
    EXPECT_EQ(fullOf(FNPath(u"a", PathFolder::userData, PathKind::file, u"sub", true)),
              fullOf(application.userData) + u"\\sub\\a");
}

} // namespace
} // namespace tessera
