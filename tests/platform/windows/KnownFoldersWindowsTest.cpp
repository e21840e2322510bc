#include "platform/KnownFolders.h"

#include "platform/windows/WideText.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <windows.h>

#include <shlobj.h>

namespace tessera::platform {
namespace {

struct Row {
    KnownFolder folder;
    int number;
};

// As the system's numbers for special folders have it.
const Row kSpecial[] = {
    {KnownFolder::userData, 26},         {KnownFolder::commonData, 35},  {KnownFolder::localData, 28},
    {KnownFolder::programFiles, 38},     {KnownFolder::commonFiles, 43}, {KnownFolder::programFilesOther, 42},
    {KnownFolder::commonFilesOther, 44},
};

TEST(KnownFoldersWindows, SpecialFoldersAreTheSystems) {
    for (const Row& row : kSpecial) {
        wchar_t path[MAX_PATH] = {};
        ASSERT_TRUE(::SHGetSpecialFolderPathW(nullptr, path, row.number, FALSE)) << row.number;
        EXPECT_EQ(knownFolder(row.folder), textOf(path)) << row.number;
    }
}

TEST(KnownFoldersWindows, TheUsersFoldersLieInTheProfile) {
    const auto profile = knownFolder(KnownFolder::profile);
    ASSERT_TRUE(profile);
    EXPECT_EQ(*profile, textOf(_wgetenv(L"USERPROFILE")));
    for (const KnownFolder folder :
         {KnownFolder::documents, KnownFolder::pictures, KnownFolder::music, KnownFolder::videos}) {
        const auto path = knownFolder(folder);
        ASSERT_TRUE(path) << static_cast<int>(folder);
        EXPECT_NE(path->back(), u'\\');
    }
    EXPECT_NE(knownFolder(KnownFolder::music), knownFolder(KnownFolder::videos));
}

TEST(KnownFoldersWindows, ProgramsOfThisWidthHaveTheirFolder) {
    const auto native = knownFolder(KnownFolder::programFilesNative);
    ASSERT_TRUE(native);
    EXPECT_EQ(*native, textOf(_wgetenv(L"ProgramW6432")));
    EXPECT_EQ(knownFolder(KnownFolder::programFilesOrCommon), native);
}

TEST(KnownFoldersWindows, TheSystemFolderHoldsTheSystem) {
    const auto folder = knownFolder(KnownFolder::system);
    ASSERT_TRUE(folder);
    const std::wstring library = wideText(*folder + u"\\kernel32.dll");
    EXPECT_NE(::GetFileAttributesW(library.c_str()), INVALID_FILE_ATTRIBUTES);
}

} // namespace
} // namespace tessera::platform
