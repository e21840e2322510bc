#include "platform/Files.h"

#include "platform/windows/FileWords.h"
#include "platform/windows/SystemPath.h"

#include <algorithm>
#include <string>
#include <utility>
#include <windows.h>

namespace tessera::platform {

namespace {

// One call moves at most so much; a multiple of every sector size, which unbuffered access needs.
constexpr std::int64_t kLargestBlock = 0x40000000;

constexpr wchar_t kSeparator = L'\\';

constexpr DWORD kMoveMethods[] = {FILE_BEGIN, FILE_CURRENT, FILE_END};

File openAt(const std::wstring& path, const FileOpenFlags& flags, FileDisposition disposition, std::int32_t& error) {
    const FileWords words = fileWords(flags, disposition);
    File file = fileOf(
        ::CreateFileW(path.c_str(), words.access, words.sharing, nullptr, words.creation, words.attributes, nullptr));
    error = file.isOpen() ? 0 : lastSystemError();
    return file;
}

// Some volumes of the network know no long paths, but short names for what lies deep.
std::wstring shortPath(const std::wstring& path) {
    std::wstring name(MAX_PATH, L'\0');
    const DWORD length = ::GetShortPathNameW(path.c_str(), name.data(), MAX_PATH);
    name.resize(length < MAX_PATH ? length : 0);
    return name;
}

// True also when somebody has that name already, be it a file.
bool makeFolder(const std::wstring& path, std::int32_t& error) {
    const bool taken = ::CreateDirectoryW(path.c_str(), nullptr) != 0 || ::GetLastError() == ERROR_ALREADY_EXISTS;
    error = taken ? 0 : lastSystemError();
    return taken;
}

// Up to the first that can be made or is there, and down again from that one.
void makeFolders(const std::wstring& path, std::int32_t& error) {
    std::size_t end = path.size();
    while (!makeFolder(path.substr(0, end), error)) {
        const std::size_t above = path.find_last_not_of(kSeparator, path.rfind(kSeparator, end - 1));
        if (error != ERROR_PATH_NOT_FOUND || above == path.npos || above + 1 >= end) {
            return;
        }
        end = above + 1;
    }
    while (error == 0 && end < path.size()) {
        end = std::min(path.find(kSeparator, end + 1), path.size());
        makeFolder(path.substr(0, end), error);
    }
}

} // namespace

File File::open(std::u16string_view path, const FileOpenFlags& flags, FileDisposition disposition,
                std::int32_t& error) {
    const std::wstring name = systemPath(path);
    File file = openAt(name, flags, disposition, error);
    if (!file.isOpen() && disposition == FileDisposition::openExisting && name.size() >= kLongPath) {
        const std::wstring shorter = shortPath(name);
        std::int32_t ignored = 0;
        if (!shorter.empty()) {
            file = openAt(shorter, flags, disposition, ignored);
        }
    }
    // A name like "com1" means a device in every folder.
    if (file.isOpen() && ::GetFileType(handleOf(file)) != FILE_TYPE_DISK) {
        file = File();
        error = ERROR_BAD_FILE_TYPE;
    } else if (file.isOpen()) {
        error = 0;
    }
    return file;
}

bool File::close(std::int32_t& error) {
    error = 0;
    return !isOpen() || succeeded(::CloseHandle(reinterpret_cast<HANDLE>(std::exchange(handle_, kClosed))), error);
}

std::int64_t File::read(void* buffer, std::int64_t size, std::int32_t& error) {
    error = 0;
    std::int64_t done = 0;
    while (done < size) {
        DWORD count = 0;
        const auto wanted = static_cast<DWORD>(std::min(size - done, kLargestBlock));
        if (!succeeded(::ReadFile(handleOf(*this), static_cast<char*>(buffer) + done, wanted, &count, nullptr),
                       error)) {
            return done > 0 ? done : -1;
        }
        done += count;
        // The end. Without buffers nothing may be asked for from the middle of a sector.
        if (count < wanted) {
            break;
        }
    }
    return done;
}

std::int64_t File::write(const void* buffer, std::int64_t size, std::int32_t& error) {
    error = 0;
    std::int64_t done = 0;
    while (done < size) {
        DWORD count = 0;
        const auto wanted = static_cast<DWORD>(std::min(size - done, kLargestBlock));
        if (!succeeded(::WriteFile(handleOf(*this), static_cast<const char*>(buffer) + done, wanted, &count, nullptr),
                       error) ||
            count == 0) {
            error = error != 0 ? error : ERROR_DISK_FULL;
            return done > 0 ? done : -1;
        }
        done += count;
    }
    return done;
}

std::int64_t File::seek(std::int64_t offset, FileSeek mode, std::int32_t& error) {
    LARGE_INTEGER distance;
    LARGE_INTEGER position;
    distance.QuadPart = offset;
    const DWORD method = kMoveMethods[static_cast<std::size_t>(mode)];
    return succeeded(::SetFilePointerEx(handleOf(*this), distance, &position, method), error) ? position.QuadPart : -1;
}

std::int64_t File::size(std::int32_t& error) {
    LARGE_INTEGER size;
    return succeeded(::GetFileSizeEx(handleOf(*this), &size), error) ? size.QuadPart : -1;
}

bool File::truncate(std::int64_t length, std::int32_t& error) {
    const std::int64_t position = seek(0, FileSeek::fromHere, error);
    if (position < 0 || seek(length, FileSeek::fromStart, error) < 0) {
        return false;
    }
    const bool cut = succeeded(::SetEndOfFile(handleOf(*this)), error);
    std::int32_t ignored = 0;
    seek(position, FileSeek::fromStart, ignored);
    return cut;
}

bool File::flush(std::int32_t& error) {
    if (succeeded(::FlushFileBuffers(handleOf(*this)), error)) {
        return true;
    }
    // What isn't open for writing has nothing to hand over.
    const bool readOnly = error == ERROR_ACCESS_DENIED;
    error = readOnly ? 0 : error;
    return readOnly;
}

FileKind fileKindOf(std::u16string_view path) {
    const std::wstring name = systemPath(path);
    DWORD attributes = ::GetFileAttributesW(name.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        std::int32_t ignored = 0;
        BY_HANDLE_FILE_INFORMATION target;
        const File file = openForQuestions(name, LinkUse::follow, ignored);
        const bool known = file.isOpen() && ::GetFileInformationByHandle(handleOf(file), &target) != 0;
        attributes = known ? target.dwFileAttributes : INVALID_FILE_ATTRIBUTES;
    }
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return FileKind::missing;
    }
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileKind::folder : FileKind::file;
}

std::uint32_t sectorSizeOf(std::u16string_view path) {
    const std::wstring root = volumeRootOf(systemPath(path));
    DWORD sectorsPerCluster = 0;
    DWORD bytesPerSector = 0;
    DWORD freeClusters = 0;
    DWORD clusters = 0;
    const bool known = !root.empty() &&
                       ::GetDiskFreeSpaceW(root.c_str(), &sectorsPerCluster, &bytesPerSector, &freeClusters, &clusters);
    return known ? bytesPerSector : 0;
}

bool createFolders(std::u16string_view path, std::int32_t& error) {
    const std::wstring name = systemPath(path, kLongFolderPath);
    makeFolders(name, error);
    // A root can be there and yet not be made, and a name can be a file's.
    const bool made = fileKindOf(path) == FileKind::folder;
    error = made ? 0 : error != 0 ? error : ERROR_DIRECTORY;
    return made;
}

} // namespace tessera::platform
