#include "platform/KnownFolders.h"

#include "platform/windows/SystemFolderValue.h"
#include "platform/windows/WideText.h"

#include <cwchar>
#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

namespace tessera::platform {

namespace {

using OptionalPath = std::optional<std::u16string>;

constexpr const wchar_t* kSystemKey = L"Software\\Microsoft\\Windows\\CurrentVersion";
constexpr DWORD kLongestValue = 260;

// The numbers by which the system knows its older special folders.
constexpr int kRoamingData = 26;
constexpr int kLocalData = 28;
constexpr int kCommonData = 35;
constexpr int kProgramFiles = 38;
constexpr int kProgramFilesOther = 42;
constexpr int kCommonFiles = 43;
constexpr int kCommonFilesOther = 44;

// {3EB685DB-65F9-4CF6-A03A-E3EF65729F3D}
constexpr GUID kRoaming = {0x3EB685DB, 0x65F9, 0x4CF6, {0xA0, 0x3A, 0xE3, 0xEF, 0x65, 0x72, 0x9F, 0x3D}};
// {F7F1ED05-9F6D-47A2-AAAE-29D317C6F066}
constexpr GUID kShared = {0xF7F1ED05, 0x9F6D, 0x47A2, {0xAA, 0xAE, 0x29, 0xD3, 0x17, 0xC6, 0xF0, 0x66}};
// {6D809377-6AF0-444B-8957-A3773F02200E}
constexpr GUID kNativeProgramFiles = {0x6D809377, 0x6AF0, 0x444B, {0x89, 0x57, 0xA3, 0x77, 0x3F, 0x02, 0x20, 0x0E}};
// {5E6C858F-0E22-4760-9AFE-EA3317B67173}
constexpr GUID kProfile = {0x5E6C858F, 0x0E22, 0x4760, {0x9A, 0xFE, 0xEA, 0x33, 0x17, 0xB6, 0x71, 0x73}};
// {FDD39AD0-238F-46AF-ADB4-6C85480369C7}
constexpr GUID kDocuments = {0xFDD39AD0, 0x238F, 0x46AF, {0xAD, 0xB4, 0x6C, 0x85, 0x48, 0x03, 0x69, 0xC7}};
// {33E28130-4E1E-4676-835A-98395C3BC3BB}
constexpr GUID kPictures = {0x33E28130, 0x4E1E, 0x4676, {0x83, 0x5A, 0x98, 0x39, 0x5C, 0x3B, 0xC3, 0xBB}};
// {4BD8D571-6D19-48D3-BE97-422220080E43}
constexpr GUID kMusic = {0x4BD8D571, 0x6D19, 0x48D3, {0xBE, 0x97, 0x42, 0x22, 0x20, 0x08, 0x0E, 0x43}};
// {18989B1D-99B5-455B-841C-AB7C74E4DDFC}
constexpr GUID kVideos = {0x18989B1D, 0x99B5, 0x455B, {0x84, 0x1C, 0xAB, 0x7C, 0x74, 0xE4, 0xDD, 0xFC}};

// Without the separators at the end, but for a drive's.
OptionalPath pathOf(const wchar_t* text) {
    std::u16string path = textOf(text);
    while (path.size() > 3 && path.back() == u'\\') {
        path.pop_back();
    }
    return path.empty() ? std::nullopt : OptionalPath(std::move(path));
}

OptionalPath specialFolder(int number) {
    wchar_t path[MAX_PATH] = {};
    return ::SHGetSpecialFolderPathW(nullptr, path, number, FALSE) ? pathOf(path) : std::nullopt;
}

OptionalPath knownFolderOf(const GUID& folder) {
    PWSTR path = nullptr;
    const bool known = SUCCEEDED(::SHGetKnownFolderPath(folder, 0, nullptr, &path)) && path != nullptr;
    OptionalPath result = known ? pathOf(path) : std::nullopt;
    ::CoTaskMemFree(path);
    return result;
}

OptionalPath nativeProgramFilesOr(const wchar_t* value) {
    OptionalPath folder = knownFolderOf(kNativeProgramFiles);
    return folder ? folder : systemFolderValue(value);
}

OptionalPath systemFolder() {
    wchar_t path[MAX_PATH] = {};
    const UINT length = ::GetSystemDirectoryW(path, MAX_PATH);
    return length > 0 && length < MAX_PATH ? pathOf(path) : std::nullopt;
}

} // namespace

std::optional<std::u16string> systemFolderValue(const wchar_t* name) {
    HKEY key = nullptr;
    if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, kSystemKey, 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    // One more than is read, for the end that a value need not have.
    wchar_t text[kLongestValue / sizeof(wchar_t) + 1] = {};
    DWORD size = kLongestValue;
    DWORD type = REG_NONE;
    const LONG result = ::RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(text), &size);
    ::RegCloseKey(key);
    return result == ERROR_SUCCESS && type == REG_SZ ? pathOf(text) : std::nullopt;
}

std::optional<std::u16string> knownFolder(KnownFolder folder) {
    switch (folder) {
    case KnownFolder::userData:
        return specialFolder(kRoamingData);
    case KnownFolder::localData:
        return specialFolder(kLocalData);
    case KnownFolder::roamingData:
        return knownFolderOf(kRoaming);
    case KnownFolder::sharedFiles:
        return knownFolderOf(kShared);
    case KnownFolder::commonData:
        return specialFolder(kCommonData);
    case KnownFolder::programFiles:
        return specialFolder(kProgramFiles);
    case KnownFolder::programFilesNative:
        return nativeProgramFilesOr(L"ProgramFilesDir");
    case KnownFolder::programFilesOther:
        return specialFolder(kProgramFilesOther);
    case KnownFolder::programFilesOrCommon:
        return nativeProgramFilesOr(L"CommonFilesDir");
    case KnownFolder::commonFiles:
        return specialFolder(kCommonFiles);
    case KnownFolder::commonFilesOther:
        return specialFolder(kCommonFilesOther);
    case KnownFolder::system:
        return systemFolder();
    case KnownFolder::profile:
        return knownFolderOf(kProfile);
    case KnownFolder::documents:
        return knownFolderOf(kDocuments);
    case KnownFolder::pictures:
        return knownFolderOf(kPictures);
    case KnownFolder::music:
        return knownFolderOf(kMusic);
    case KnownFolder::videos:
        return knownFolderOf(kVideos);
    }
    return std::nullopt;
}

} // namespace tessera::platform
