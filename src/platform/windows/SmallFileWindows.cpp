#include "platform/SmallFile.h"

#include "platform/Files.h"
#include "platform/windows/SystemPath.h"
#include "platform/windows/UnfinishedName.h"

#include <algorithm>
#include <windows.h>

namespace tessera::platform {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Grown as bytes come: the limit is a bound, not an expectation.
constexpr std::size_t kBlock = 4096;

// Not open, with a reason, also for a pipe or a device, which a name like "com1" means in every folder.
File openPlain(const std::wstring& path, DWORD access, DWORD disposition, std::int32_t& error) {
    File file =
        fileOf(::CreateFileW(path.c_str(), access, kShareAll, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    error = file.isOpen() ? 0 : lastSystemError();
    if (file.isOpen() && ::GetFileType(handleOf(file)) != FILE_TYPE_DISK) {
        error = ERROR_BAD_FILE_TYPE;
        return File();
    }
    return file;
}

// Such a file refuses even to be asked.
bool isDeleted(const std::wstring& path) {
    return ::GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES && ::GetLastError() == ERROR_ACCESS_DENIED;
}

bool writeOver(File& file, std::string_view bytes) {
    const auto size = static_cast<std::int64_t>(bytes.size());
    std::int32_t error = 0;
    // Moving the end can show for a moment; where it stands right it is left alone.
    return file.write(bytes.data(), size, error) == size && (file.size(error) == size || file.truncate(size, error));
}

enum class Published { yes, nameTaken, failed };

// Written under another name first, so that nobody meets it half done.
Published publishNew(const std::wstring& path, std::string_view bytes) {
    std::int32_t error = 0;
    const std::wstring part = path.substr(0, path.rfind(L'\\') + 1) + wideText(unfinishedName());
    bool whole = false;
    {
        File file = openPlain(part, GENERIC_WRITE, CREATE_NEW, error);
        whole = file.isOpen() && writeOver(file, bytes);
    }
    if (whole && ::MoveFileW(part.c_str(), path.c_str())) {
        return Published::yes;
    }
    ::DeleteFileW(part.c_str());
    return whole ? Published::nameTaken : Published::failed;
}

} // namespace

const std::string_view kLineEnding = "\r\n";

std::optional<std::string> readSmallFile(const std::string& path, std::size_t limit) {
    std::int32_t error = 0;
    File file = openPlain(systemPath(path), GENERIC_READ, OPEN_EXISTING, error);
    if (!file.isOpen()) {
        return std::nullopt;
    }
    std::string bytes;
    char block[kBlock];
    while (bytes.size() < limit) {
        const auto wanted = static_cast<std::int64_t>(std::min(limit - bytes.size(), sizeof block));
        const std::int64_t got = file.read(block, wanted, error);
        if (error != 0) {
            return std::nullopt;
        }
        bytes.append(block, static_cast<std::size_t>(got));
        if (got < wanted) {
            break;
        }
    }
    return bytes;
}

bool writeSmallFile(const std::string& path, std::string_view bytes) {
    const std::wstring name = systemPath(path);
    // A file that was deleted while somebody reads it keeps its name until the reader is done, and somebody else may be
    // quicker with a new one.
    constexpr int kTries = 50;
    constexpr DWORD kPauseMs = 2;
    for (int i = 0; i < kTries; ++i) {
        std::int32_t error = 0;
        File present = openPlain(name, GENERIC_WRITE, OPEN_EXISTING, error);
        if (present.isOpen()) {
            return writeOver(present, bytes);
        }
        if (error == ERROR_FILE_NOT_FOUND) {
            const Published published = publishNew(name, bytes);
            if (published != Published::nameTaken) {
                return published == Published::yes;
            }
        } else if (error != ERROR_ACCESS_DENIED || !isDeleted(name)) {
            return false;
        }
        ::Sleep(kPauseMs);
    }
    return false;
}

} // namespace tessera::platform
