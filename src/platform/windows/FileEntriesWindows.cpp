#include "platform/FileEntries.h"

#include "platform/windows/ReparseTag.h"
#include "platform/windows/ShellLink.h"
#include "platform/windows/SystemPath.h"
#include "platform/windows/SystemTime.h"
#include "platform/windows/UnfinishedName.h"
#include "platform/windows/WideText.h"

#include <algorithm>
#include <windows.h>

namespace tessera::platform {

namespace {

bool isThere(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES;
}

bool hasTag(DWORD attributes) {
    return isThere(attributes) && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

// Of the entry itself.
std::uint32_t tagAt(const std::wstring& path) {
    std::int32_t ignored = 0;
    FILE_ATTRIBUTE_TAG_INFO info = {};
    const File file = openForQuestions(path, LinkUse::stay, ignored);
    const bool known =
        file.isOpen() && ::GetFileInformationByHandleEx(handleOf(file), FileAttributeTagInfo, &info, sizeof info) != 0;
    return known ? info.ReparseTag : 0;
}

FileStatus statusOf(DWORD attributes, FILETIME created, FILETIME modified, DWORD sizeHigh, DWORD sizeLow) {
    FileStatus status;
    status.isFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    status.size = status.isFolder ? 0 : static_cast<std::int64_t>((std::uint64_t{sizeHigh} << 32) | sizeLow);
    status.created = unixSeconds(created.dwHighDateTime, created.dwLowDateTime);
    status.modified = unixSeconds(modified.dwHighDateTime, modified.dwLowDateTime);
    return status;
}

bool readIdentity(std::u16string_view path, BY_HANDLE_FILE_INFORMATION& info) {
    std::int32_t ignored = 0;
    const File file = openForQuestions(systemPath(path), LinkUse::follow, ignored);
    return file.isOpen() && ::GetFileInformationByHandle(handleOf(file), &info) != 0;
}

// A link to a folder is an entry like a folder, and goes as one; what lies in the folder stays.
bool deleteEntry(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    const bool folderLink =
        hasTag(attributes) && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && isLinkTag(tagAt(path));
    return (folderLink ? ::RemoveDirectoryW(path.c_str()) : ::DeleteFileW(path.c_str())) != 0;
}

bool deleteAnyhow(const std::wstring& path, std::int32_t& error) {
    if (succeeded(deleteEntry(path), error)) {
        return true;
    }
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    // The mark of a folder, which isn't deleted here, means something else.
    const bool isPlainFolder = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && !hasTag(attributes);
    if (!isThere(attributes) || (attributes & FILE_ATTRIBUTE_READONLY) == 0 || isPlainFolder) {
        return false;
    }
    if (!::SetFileAttributesW(path.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY})) {
        return false;
    }
    if (succeeded(deleteEntry(path), error)) {
        return true;
    }
    ::SetFileAttributesW(path.c_str(), attributes);
    return false;
}

// As the file systems compare them.
bool equalNames(const std::wstring& a, const std::wstring& b) {
    return ::CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()), TRUE) ==
           CSTR_EQUAL;
}

bool areOnOneVolume(const std::wstring& from, const std::wstring& to) {
    const std::wstring a = volumeRootOf(from);
    const std::wstring b = volumeRootOf(to);
    return a.empty() || b.empty() || equalNames(a, b);
}

bool flushFile(const std::wstring& path, std::int32_t& error) {
    File file = openShared(path, GENERIC_WRITE, 0, error);
    return file.isOpen() && file.flush(error);
}

// A read-only copy couldn't be opened for the flush: the mark comes last.
bool copyWhole(const std::wstring& from, const std::wstring& to, std::int32_t& error) {
    if (!succeeded(::CopyFileW(from.c_str(), to.c_str(), TRUE), error)) {
        return false;
    }
    const DWORD attributes = ::GetFileAttributesW(to.c_str());
    if (isThere(attributes) && (attributes & FILE_ATTRIBUTE_READONLY) == 0) {
        return flushFile(to, error);
    }
    return succeeded(::SetFileAttributesW(to.c_str(), FILE_ATTRIBUTE_NORMAL), error) && flushFile(to, error) &&
           succeeded(::SetFileAttributesW(to.c_str(), attributes), error);
}

// The original is deleted last of all; if that fails the copy goes again: there is one file, here or there.
bool moveAcrossVolumes(const std::wstring& from, const std::wstring& to, std::int32_t& error) {
    const DWORD attributes = ::GetFileAttributesW(from.c_str());
    if (!isThere(attributes)) {
        error = lastSystemError();
        return false;
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 || (hasTag(attributes) && isLinkTag(tagAt(from)))) {
        error = ERROR_NOT_SAME_DEVICE;
        return false;
    }
    const std::wstring part = to.substr(0, to.rfind(L'\\') + 1) + wideText(unfinishedName());
    std::int32_t ignored = 0;
    if (!copyWhole(from, part, error) || !succeeded(::MoveFileW(part.c_str(), to.c_str()), error)) {
        deleteAnyhow(part, ignored);
        return false;
    }
    if (!deleteAnyhow(from, error)) {
        deleteAnyhow(to, ignored);
        return false;
    }
    return true;
}

} // namespace

std::optional<FileStatus> fileStatus(std::u16string_view path, std::int32_t& error) {
    const std::wstring name = systemPath(path);
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!succeeded(::GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &data), error)) {
        return std::nullopt;
    }
    const bool isLink = hasTag(data.dwFileAttributes) && isLinkTag(tagAt(name));
    BY_HANDLE_FILE_INFORMATION target;
    FileStatus status = isLink && readIdentity(path, target)
                            ? statusOf(target.dwFileAttributes, target.ftCreationTime, target.ftLastWriteTime,
                                       target.nFileSizeHigh, target.nFileSizeLow)
                            : statusOf(data.dwFileAttributes, data.ftCreationTime, data.ftLastWriteTime,
                                       data.nFileSizeHigh, data.nFileSizeLow);
    status.isLink = isLink;
    status.isHidden = (data.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
    return status;
}

bool isSameFile(std::u16string_view a, std::u16string_view b) {
    BY_HANDLE_FILE_INFORMATION first;
    BY_HANDLE_FILE_INFORMATION second;
    if (!readIdentity(a, first) || !readIdentity(b, second) ||
        first.dwVolumeSerialNumber != second.dwVolumeSerialNumber || first.nFileIndexHigh != second.nFileIndexHigh ||
        first.nFileIndexLow != second.nFileIndexLow) {
        return false;
    }
    // Some file systems of the network number nothing.
    const bool numbered = first.nFileIndexHigh != 0 || first.nFileIndexLow != 0;
    return numbered || equalNames(wideText(canonicalPath(a).value_or(u"")), wideText(canonicalPath(b).value_or(u"")));
}

std::optional<std::u16string> canonicalPath(std::u16string_view path) {
    std::int32_t ignored = 0;
    const std::wstring name = systemPath(path);
    const File file = openForQuestions(name, LinkUse::follow, ignored);
    if (!file.isOpen()) {
        return std::nullopt;
    }
    std::wstring whole(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = ::GetFinalPathNameByHandleW(handleOf(file), whole.data(), static_cast<DWORD>(whole.size()),
                                                         FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
        const bool fits = length < whole.size();
        whole.resize(length);
        if (fits) {
            // Disks that aren't known to the system's manager of mounts don't tell; links on them stay.
            return withoutLongPrefix(length != 0 ? whole : fullPath(name));
        }
    }
}

std::optional<std::u16string> storedName(std::u16string_view path) {
    WIN32_FIND_DATAW found;
    const std::wstring name = systemPath(path);
    // These characters would ask for a search.
    const std::size_t last = name.rfind(L'\\') + 1;
    if (name.find_first_of(L"*?", last) != name.npos) {
        return std::nullopt;
    }
    const HANDLE find = ::FindFirstFileW(name.c_str(), &found);
    if (find == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    ::FindClose(find);
    return textOf(found.cFileName);
}

bool deleteFile(std::u16string_view path, std::int32_t& error) {
    return deleteAnyhow(systemPath(path), error);
}

bool moveEntry(std::u16string_view from, std::u16string_view to, std::int32_t& error) {
    const std::wstring source = systemPath(from);
    const std::wstring target = systemPath(to);
    // Across volumes the call itself would show the copy under its name while it is made, and not wait for the disk.
    if (!areOnOneVolume(source, target)) {
        return moveAcrossVolumes(source, target, error);
    }
    return succeeded(::MoveFileW(source.c_str(), target.c_str()), error);
}

// The file systems here keep their entries in order by themselves, and no call asks them to.
bool flushFolder(std::u16string_view path, std::int32_t& error) {
    const bool there = fileKindOf(path) == FileKind::folder;
    error = there ? 0 : ERROR_PATH_NOT_FOUND;
    return there;
}

bool createLink(std::u16string_view path, std::u16string_view target, std::int32_t& error) {
    return saveShellLink(systemPath(path), systemPath(target), error);
}

std::optional<std::u16string> readLink(std::u16string_view path) {
    const auto target = loadShellLink(systemPath(path));
    return target ? std::optional(withoutLongPrefix(*target)) : std::nullopt;
}

} // namespace tessera::platform
