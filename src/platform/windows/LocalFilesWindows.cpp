#include "platform/LocalFiles.h"

#include "platform/FileEntries.h"
#include "platform/Folder.h"
#include "platform/windows/SystemPath.h"
#include "platform/windows/SystemTime.h"
#include "platform/windows/WideText.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>
#include <windows.h>

// The compiler's standard library goes through the C runtime: it reports the runtime's numbers, which mean other things
// among the system's, keeps times to the second, and enters junctions.
namespace tessera::platform {

namespace {

constexpr std::int64_t kNanosecondsPerUnit = 100;

std::error_code codeOf(std::int32_t number) {
    return {number, std::system_category()};
}

std::string slashText(std::u16string_view path) {
    std::string text = utf8Of(path);
    std::replace(text.begin(), text.end(), '\\', '/');
    return text;
}

// In the form of the other services.
std::u16string servicePath(const std::string& path) {
    return textOf(systemPath(path));
}

bool saysMissing(std::int32_t error) {
    constexpr std::int32_t kMissing[] = {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_INVALID_DRIVE,
                                         ERROR_BAD_NETPATH,    ERROR_BAD_NET_NAME,   ERROR_INVALID_NAME};
    return std::find(std::begin(kMissing), std::end(kMissing), error) != std::end(kMissing);
}

std::optional<FileStatus> statusOf(const std::string& path, std::error_code& error) {
    std::int32_t number = 0;
    auto status = fileStatus(servicePath(path), number);
    error = saysMissing(number) ? std::error_code() : codeOf(number);
    return status;
}

EntryType typeOf(FileKind kind) {
    return kind == FileKind::folder ? EntryType::folder : kind == FileKind::file ? EntryType::file : EntryType::missing;
}

// Times before the year 1678 and behind 2261 have no place in the standard's clock.
FileTime fileTimeOf(FILETIME time) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max() / kNanosecondsPerUnit;
    const auto units = static_cast<std::int64_t>((std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime);
    return FileTime(
        std::chrono::nanoseconds(std::clamp(units - kUnitsBefore1970, -kMost, kMost) * kNanosecondsPerUnit));
}

FILETIME systemTimeOf(FileTime time) {
    const std::int64_t count = std::chrono::nanoseconds(time.time_since_epoch()).count();
    const std::int64_t below = count % kNanosecondsPerUnit < 0 ? 1 : 0;
    const auto units = static_cast<std::uint64_t>(count / kNanosecondsPerUnit - below + kUnitsBefore1970);
    return {static_cast<DWORD>(units), static_cast<DWORD>(units >> 32)};
}

struct Place {
    std::u16string folder;
    std::u16string name;
};

// Where an entry stands. Without a name for a root.
Place placeOf(const std::string& path) {
    const std::u16string whole = textOf(fullPath(systemPath(path)));
    const std::size_t end = whole.rfind(u'\\') + 1;
    return {whole.substr(0, end), whole.substr(end)};
}

std::uint64_t removeBelow(const Folder& parent, std::u16string_view name, std::int32_t& error);

// The whole list first: a folder that changes while it is read may leave entries out.
std::uint64_t removeContent(Folder& folder, std::int32_t& error) {
    std::vector<std::pair<std::u16string, bool>> entries;
    while (const FolderEntry* entry = folder.next()) {
        entries.emplace_back(entry->name, entry->isFolder && !entry->isLink);
    }
    std::uint64_t count = 0;
    error = folder.error();
    for (std::size_t i = 0; i < entries.size() && error == 0; ++i) {
        const auto& [name, isFolder] = entries[i];
        count += isFolder ? removeBelow(folder, name, error) : folder.deleteFile(name, error) ? 1 : 0;
    }
    return count;
}

// A folder that is no link.
std::uint64_t removeBelow(const Folder& parent, std::u16string_view name, std::int32_t& error) {
    std::uint64_t count = 0;
    {
        Folder folder = parent.openFolder(name, error);
        if (!folder.isOpen()) {
            return 0;
        }
        count = removeContent(folder, error);
    }
    return count + (error == 0 && parent.deleteFolder(name, error) ? 1 : 0);
}

void copyLinkEntry(const std::string& from, const std::string& to, std::int32_t& error) {
    const Place source = placeOf(from);
    const Place target = placeOf(to);
    const Folder sourceFolder = Folder::open(source.folder, error);
    const Folder targetFolder = sourceFolder.isOpen() ? Folder::open(target.folder, error) : Folder();
    if (!targetFolder.isOpen()) {
        return;
    }
    if (source.name != target.name) {
        error = ERROR_NOT_SUPPORTED;
        return;
    }
    targetFolder.copyLink(source.name, sourceFolder, error);
}

} // namespace

std::string currentFolder(std::error_code& error) {
    const std::wstring folder = fullPath(L".");
    error = folder.empty() ? codeOf(lastSystemError()) : std::error_code();
    return slashText(textOf(folder));
}

void setCurrentFolder(const std::string& path, std::error_code& error) {
    std::int32_t number = 0;
    succeeded(::SetCurrentDirectoryW(systemPath(path).c_str()), number);
    error = codeOf(number);
}

std::string absolutePath(const std::string& path, std::error_code& error) {
    const std::wstring whole = fullPath(systemPath(path));
    error = whole.empty() ? codeOf(ERROR_INVALID_NAME) : std::error_code();
    return slashText(withoutLongPrefix(whole));
}

std::string canonicalName(const std::string& path, std::error_code& error) {
    const std::wstring whole = fullPath(systemPath(path));
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = ::GetLongPathNameW(whole.c_str(), name.data(), static_cast<DWORD>(name.size()));
        const bool fits = length < name.size();
        name.resize(length);
        if (fits) {
            error = length != 0 ? std::error_code() : codeOf(lastSystemError());
            return slashText(withoutLongPrefix(name));
        }
    }
}

EntryType entryType(const std::string& path, std::error_code& error) {
    const auto status = statusOf(path, error);
    // A link that leads nowhere tells of itself.
    return status && status->isLink ? typeOf(fileKindOf(servicePath(path)))
           : !status                ? EntryType::missing
           : status->isFolder       ? EntryType::folder
                                    : EntryType::file;
}

EntryType ownEntryType(const std::string& path, std::error_code& error) {
    const auto status = statusOf(path, error);
    return status && status->isLink ? EntryType::other : entryType(path, error);
}

bool isOneEntry(const std::string& a, const std::string& b, std::error_code& error) {
    error.clear();
    return isSameFile(servicePath(a), servicePath(b));
}

std::uint64_t fileLength(const std::string& path, std::error_code& error) {
    std::int32_t number = 0;
    const auto status = fileStatus(servicePath(path), number);
    const bool isFile = status && !status->isFolder;
    error = status && !isFile ? codeOf(ERROR_ACCESS_DENIED) : codeOf(number);
    return isFile ? static_cast<std::uint64_t>(status->size) : 0;
}

FileTime changeTime(const std::string& path, std::error_code& error) {
    std::int32_t number = 0;
    FILETIME time = {};
    const File file = openForQuestions(systemPath(path), LinkUse::follow, number);
    const bool told = file.isOpen() && succeeded(::GetFileTime(handleOf(file), nullptr, nullptr, &time), number);
    error = codeOf(number);
    return told ? fileTimeOf(time) : FileTime();
}

void setChangeTime(const std::string& path, FileTime time, std::error_code& error) {
    const FILETIME systemTime = systemTimeOf(time);
    std::int32_t number = 0;
    const File file = openShared(systemPath(path), FILE_WRITE_ATTRIBUTES, FILE_FLAG_BACKUP_SEMANTICS, number);
    if (file.isOpen()) {
        succeeded(::SetFileTime(handleOf(file), nullptr, nullptr, &systemTime), number);
    }
    error = codeOf(number);
}

std::vector<NamedEntry> entriesOf(const std::string& path, std::error_code& error) {
    std::int32_t number = 0;
    std::vector<NamedEntry> entries;
    Folder folder = Folder::open(servicePath(path), number);
    while (const FolderEntry* entry = folder.next()) {
        entries.push_back({utf8Of(entry->name), entry->isFolder && !entry->isLink});
    }
    error = codeOf(folder.isOpen() ? folder.error() : number);
    return entries;
}

bool makeFolder(const std::string& path, std::error_code& error) {
    std::int32_t number = 0;
    const std::wstring name = systemPath(servicePath(path), kLongFolderPath);
    const bool made = succeeded(::CreateDirectoryW(name.c_str(), nullptr), number);
    // A root is there, and yet the system may give another reason.
    const bool wasThere = !made && entryType(path, error) == EntryType::folder;
    error = made || wasThere ? std::error_code() : codeOf(number);
    return made;
}

bool makeFolders(const std::string& path, std::error_code& error) {
    if (entryType(path, error) == EntryType::folder) {
        return false;
    }
    std::int32_t number = 0;
    const bool made = createFolders(servicePath(path), number);
    error = codeOf(number);
    return made;
}

bool makeFolderLike(const std::string& path, const std::string&, std::error_code& error) {
    return makeFolder(path, error);
}

void copyEntry(const std::string& from, const std::string& to, std::error_code& error) {
    const auto status = statusOf(from, error);
    std::int32_t number = 0;
    if (status && status->isLink) {
        copyLinkEntry(from, to, number);
    } else {
        succeeded(::CopyFileW(systemPath(from).c_str(), systemPath(to).c_str(), TRUE), number);
    }
    error = codeOf(number);
}

void renameEntry(const std::string& from, const std::string& to, std::error_code& error) {
    const DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED;
    std::int32_t number = 0;
    succeeded(::MoveFileExW(systemPath(from).c_str(), systemPath(to).c_str(), flags), number);
    error = codeOf(number);
}

bool removeEntry(const std::string& path, std::error_code& error) {
    const auto status = statusOf(path, error);
    if (!status) {
        return false;
    }
    std::int32_t number = 0;
    const bool isPlainFolder = status->isFolder && !status->isLink;
    const bool removed = isPlainFolder ? succeeded(::RemoveDirectoryW(systemPath(path).c_str()), number)
                                       : deleteFile(servicePath(path), number);
    error = codeOf(number);
    return removed;
}

std::uint64_t removeTree(const std::string& path, std::error_code& error) {
    const auto status = statusOf(path, error);
    if (!status || !status->isFolder || status->isLink) {
        return removeEntry(path, error) ? 1 : 0;
    }
    std::int32_t number = 0;
    const Place place = placeOf(path);
    const Folder parent = Folder::open(place.folder, number);
    const std::uint64_t count = parent.isOpen() ? removeBelow(parent, place.name, number) : 0;
    error = codeOf(number);
    return count;
}

} // namespace tessera::platform
