#include "platform/KnownFolders.h"

#include "support/ScopedEnvironment.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tessera::platform {
namespace {

using testing_support::ScopedEnvironment;

std::u16string known(KnownFolder folder) {
    return knownFolder(folder).value_or(u"none");
}

TEST(KnownFolders, SettingsFollowTheEnvironment) {
    const ScopedEnvironment home("HOME", "/home/somebody");
    {
        const ScopedEnvironment config("XDG_CONFIG_HOME", "/my/config/");
        const ScopedEnvironment data("XDG_DATA_HOME", "/my/data");
        EXPECT_EQ(known(KnownFolder::userData), u"\\my\\config");
        EXPECT_EQ(known(KnownFolder::localData), u"\\my\\data");
    }
    for (const char* invalid : {"", "relative/folder"}) {
        const ScopedEnvironment config("XDG_CONFIG_HOME", invalid);
        const ScopedEnvironment data("XDG_DATA_HOME", invalid);
        EXPECT_EQ(known(KnownFolder::userData), u"\\home\\somebody\\.config");
        EXPECT_EQ(known(KnownFolder::localData), u"\\home\\somebody\\.local\\share");
    }
    EXPECT_EQ(known(KnownFolder::profile), u"\\home\\somebody");
}

TEST(KnownFolders, HomeComesFromThePasswordEntryWithoutAVariable) {
    const ScopedEnvironment home("HOME", "");
    const std::u16string folder = known(KnownFolder::profile);
    EXPECT_TRUE(folder.starts_with(u"\\")) << testing::PrintToString(folder);
}

TEST(KnownFolders, CommonDataIsTheFirstEntryThatHoldsTheVendor) {
    testing_support::ScratchFolder scratch;
    const auto entry = [&scratch](const char* name) { return (scratch / name).string(); };
    std::filesystem::create_directory(scratch / "one");
    std::filesystem::create_directories(scratch / "two" / "Marlgrove");
    std::filesystem::create_directories(scratch / "three" / "Marlgrove");
    scratch.write("file/Marlgrove", "no folder");
    const auto common = [](const std::string& list) {
        const ScopedEnvironment folders("XDG_DATA_DIRS", list);
        return known(KnownFolder::commonData);
    };
    const auto form = [](std::string path) {
        std::replace(path.begin(), path.end(), '/', '\\');
        return std::filesystem::path(path).u16string();
    };
    EXPECT_EQ(common(entry("one") + ":" + entry("two") + ":" + entry("three")), form(entry("two")));
    EXPECT_EQ(common(entry("one") + ":" + entry("file")), form(entry("one")));
    EXPECT_EQ(common("relative:" + entry("one")), form(entry("one")));
    EXPECT_EQ(common(":" + entry("one") + "/"), form(entry("one")));
    EXPECT_EQ(common("relative"), u"none");
}

TEST(KnownFolders, CommonDataHasADefaultList) {
    const ScopedEnvironment folders("XDG_DATA_DIRS", "");
    const std::u16string folder = known(KnownFolder::commonData);
    EXPECT_TRUE(folder == u"\\usr\\local\\share" || folder == u"\\usr\\share");
}

TEST(KnownFolders, ProgramsLieInFixedPlaces) {
    EXPECT_EQ(known(KnownFolder::programFiles), u"\\usr\\local\\lib");
    EXPECT_EQ(known(KnownFolder::programFilesNative), u"\\usr\\local\\lib");
    EXPECT_EQ(known(KnownFolder::programFilesOther), u"\\usr\\local\\lib");
    EXPECT_EQ(known(KnownFolder::programFilesOrCommon), u"\\usr\\local\\lib");
    EXPECT_EQ(known(KnownFolder::commonFiles), u"\\usr\\local\\lib\\common");
    EXPECT_EQ(known(KnownFolder::commonFilesOther), u"\\usr\\local\\lib\\common");
    EXPECT_EQ(known(KnownFolder::system), u"\\usr\\lib");
}

class UserDirectories : public testing::Test {
protected:
    void list(const std::string& lines) { scratch.write("user-dirs.dirs", lines); }

    testing_support::ScratchFolder scratch;
    ScopedEnvironment config{"XDG_CONFIG_HOME", scratch.path().string()};
    ScopedEnvironment home{"HOME", "/home/somebody"};
};

TEST_F(UserDirectories, ComeFromTheUsersList) {
    list("# a comment\n"
         "XDG_DOCUMENTS_DIR=\"$HOME/My Papers\"\n"
         "  XDG_MUSIC_DIR=\"/srv/music/\"\n"
         "XDG_PICTURES_DIR=\"$HOME/a \\\"b\\\" c\"\n");
    EXPECT_EQ(known(KnownFolder::documents), u"\\home\\somebody\\My Papers");
    EXPECT_EQ(known(KnownFolder::music), u"\\srv\\music");
    EXPECT_EQ(known(KnownFolder::pictures), u"\\home\\somebody\\a \"b\" c");
    EXPECT_EQ(known(KnownFolder::videos), u"none");
}

TEST_F(UserDirectories, LastLineCounts) {
    list("XDG_MUSIC_DIR=\"$HOME/One\"\nXDG_MUSIC_DIR=\"$HOME/Two\"\n");
    EXPECT_EQ(known(KnownFolder::music), u"\\home\\somebody\\Two");
}

TEST_F(UserDirectories, HomeItselfMeansNone) {
    list("XDG_MUSIC_DIR=\"$HOME/\"\nXDG_VIDEOS_DIR=\"$HOME\"\n");
    EXPECT_EQ(known(KnownFolder::music), u"none");
    EXPECT_EQ(known(KnownFolder::videos), u"none");
}

TEST_F(UserDirectories, LinesOfAnotherFormAreNone) {
    for (const char* line : {"XDG_MUSIC_DIR=/srv/music", "XDG_MUSIC_DIR=\"relative\"", "XDG_MUSIC_DIR=\"/srv/music",
                             "XDG_MUSIC_DIR=\"$HOMEWARD/a\"", "XDG_MUSIC_DIR=", "XDG_MUSIC_DIRS=\"/srv/music\""}) {
        list(line);
        EXPECT_EQ(known(KnownFolder::music), u"none") << line;
    }
}

TEST_F(UserDirectories, WithoutAListThereAreNone) {
    EXPECT_EQ(known(KnownFolder::documents), u"none");
}

} // namespace
} // namespace tessera::platform
