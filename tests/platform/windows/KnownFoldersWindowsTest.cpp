#include "platform/KnownFolders.h"

#include "platform/windows/SystemFolderValue.h"
#include "platform/windows/WideText.h"
#include "support/OwnRegistry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <windows.h>

#include <objbase.h>
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

std::u16string byIdentifier(const GUID& identifier) {
    PWSTR path = nullptr;
    EXPECT_EQ(::SHGetKnownFolderPath(identifier, 0, nullptr, &path), S_OK);
    std::u16string text = textOf(path);
    ::CoTaskMemFree(path);
    return text;
}

// Programs that ask by the newer identifiers find the same folders.
TEST(KnownFoldersWindows, NumbersAndIdentifiersMeanTheSameFolders) {
    // {3EB685DB-65F9-4CF6-A03A-E3EF65729F3D}
    const GUID roaming = {0x3EB685DB, 0x65F9, 0x4CF6, {0xA0, 0x3A, 0xE3, 0xEF, 0x65, 0x72, 0x9F, 0x3D}};
    // {F7F1ED05-9F6D-47A2-AAAE-29D317C6F066}
    const GUID common = {0xF7F1ED05, 0x9F6D, 0x47A2, {0xAA, 0xAE, 0x29, 0xD3, 0x17, 0xC6, 0xF0, 0x66}};
    EXPECT_EQ(knownFolder(KnownFolder::userData), byIdentifier(roaming));
    EXPECT_EQ(knownFolder(KnownFolder::roamingData), byIdentifier(roaming));
    EXPECT_EQ(knownFolder(KnownFolder::commonFiles), byIdentifier(common));
    EXPECT_EQ(knownFolder(KnownFolder::sharedFiles), byIdentifier(common));
}

// By the numbers that the system has had for them before.
TEST(KnownFoldersWindows, TheUsersFoldersAreTheOnesOfTheirNames) {
    const Row rows[] = {
        {KnownFolder::documents, CSIDL_PERSONAL}, {KnownFolder::music, CSIDL_MYMUSIC},
        {KnownFolder::videos, CSIDL_MYVIDEO},     {KnownFolder::pictures, CSIDL_MYPICTURES},
        {KnownFolder::profile, CSIDL_PROFILE},
    };
    for (const Row& row : rows) {
        wchar_t path[MAX_PATH] = {};
        ASSERT_TRUE(::SHGetSpecialFolderPathW(nullptr, path, row.number, FALSE)) << row.number;
        EXPECT_EQ(knownFolder(row.folder), textOf(path)) << row.number;
    }
}

void setSystemValue(const wchar_t* name, DWORD type, const void* data, std::size_t size) {
    HKEY key = nullptr;
    ASSERT_EQ(::RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Microsoft\\Windows\\CurrentVersion", 0, nullptr, 0,
                                KEY_SET_VALUE, nullptr, &key, nullptr),
              0);
    EXPECT_EQ(::RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size)), 0);
    ::RegCloseKey(key);
}

TEST(KnownFoldersWindows, AFolderCanComeFromTheRegistry) {
    const testing_support::OwnRegistry registry;
    EXPECT_EQ(systemFolderValue(L"ProgramFilesDir"), std::nullopt);
    setSystemValue(L"ProgramFilesDir", REG_SZ, L"D:\\\u97f3\\", 12);
    EXPECT_EQ(systemFolderValue(L"ProgramFilesDir"), u"D:\\\u97f3");
    setSystemValue(L"ProgramFilesDir", REG_DWORD, L"DD", 4);
    EXPECT_EQ(systemFolderValue(L"ProgramFilesDir"), std::nullopt);
}

TEST(KnownFoldersWindows, AFolderOfTheRegistryHasAtMost260Bytes) {
    const testing_support::OwnRegistry registry;
    const std::wstring longest = L"D:\\" + std::wstring(127, L'x');
    // The system itself adds an end where one follows in memory.
    setSystemValue(L"CommonFilesDir", REG_SZ, (longest + L"more").c_str(), 260);
    EXPECT_EQ(systemFolderValue(L"CommonFilesDir"), textOf(longest)) << "without an end";
    setSystemValue(L"CommonFilesDir", REG_SZ, longest.c_str(), 262);
    EXPECT_EQ(systemFolderValue(L"CommonFilesDir"), std::nullopt);
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
