#include "platform/windows/SystemPath.h"

#include "platform/PathText.h"
#include "platform/windows/WideText.h"

#include <algorithm>
#include <windows.h>

namespace tessera::platform {

namespace {

constexpr wchar_t kSeparator = L'\\';
constexpr std::wstring_view kLongPrefix = L"\\\\?\\";
constexpr std::wstring_view kLongSharePrefix = L"\\\\?\\UNC\\";
constexpr std::wstring_view kDevicePrefix = L"\\\\.\\";
constexpr std::wstring_view kSharePrefix = L"\\\\";

bool isWhole(std::wstring_view path) {
    return path.starts_with(kSharePrefix) || (path.size() >= 3 && isOnDrive(path) && path[2] == kSeparator);
}

void tidyEnd(std::wstring& path) {
    while (path.size() > 1 && path.back() == kSeparator) {
        path.pop_back();
    }
    if (path.size() == 2 && isOnDrive(path)) {
        path.push_back(kSeparator);
    }
}

// "." and ".." mean nothing in the long form.
std::wstring longForm(const std::wstring& full) {
    if (full.starts_with(kSharePrefix)) {
        return std::wstring(kLongSharePrefix).append(full, kSharePrefix.size());
    }
    return std::wstring(kLongPrefix).append(full);
}

std::wstring systemForm(std::wstring path, std::size_t limit) {
    if (path.empty() || path.find(L'\0') != path.npos) {
        return {};
    }
    std::replace(path.begin(), path.end(), L'/', kSeparator);
    if (path.starts_with(kLongPrefix) || path.starts_with(kDevicePrefix)) {
        return path;
    }
    tidyEnd(path);
    if (isWhole(path) && path.size() < limit) {
        return path;
    }
    const std::wstring full = fullPath(path);
    return full.size() < limit ? path : longForm(full);
}

// "\\server\share\" of a path on a share, else empty.
std::wstring shareRootOf(const std::wstring& path) {
    const bool isShare = path.starts_with(kSharePrefix) && !path.starts_with(kLongPrefix);
    const std::size_t server = isShare ? path.find(kSeparator, kSharePrefix.size()) : path.npos;
    if (server == path.npos) {
        return {};
    }
    return path.substr(0, path.find(kSeparator, server + 1)).append(1, kSeparator);
}

} // namespace

bool isOnDrive(std::wstring_view path) {
    const bool letter = !path.empty() && ((path[0] >= L'a' && path[0] <= L'z') || (path[0] >= L'A' && path[0] <= L'Z'));
    return letter && path.size() >= 2 && path[1] == L':';
}

std::wstring fullPath(const std::wstring& path) {
    std::wstring full(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = ::GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
        const bool fits = length < full.size();
        full.resize(length);
        if (fits) {
            return full;
        }
    }
}

std::wstring systemPath(std::u16string_view path, std::size_t limit) {
    return systemForm(wideText(path), limit);
}

std::wstring systemPath(std::string_view path) {
    return systemForm(wideText(pathFromUtf8(path).value_or(u"")), kLongPath);
}

std::u16string withoutLongPrefix(std::wstring_view path) {
    if (path.starts_with(kLongSharePrefix)) {
        return textOf(kSharePrefix).append(textOf(path.substr(kLongSharePrefix.size())));
    }
    // What isn't on a drive, as a volume that has none, is reached by the long form alone.
    const bool onDrive = path.starts_with(kLongPrefix) && isOnDrive(path.substr(kLongPrefix.size()));
    return textOf(onDrive ? path.substr(kLongPrefix.size()) : path);
}

std::wstring volumeRootOf(const std::wstring& path) {
    // The root is never longer than the path and a separator.
    std::wstring root(std::max<std::size_t>(path.size() + 2, MAX_PATH), L'\0');
    if (path.empty() || !::GetVolumePathNameW(path.c_str(), root.data(), static_cast<DWORD>(root.size()))) {
        return shareRootOf(path);
    }
    root.resize(root.find(L'\0'));
    // One volume has one root, however long the path was.
    return wideText(withoutLongPrefix(root));
}

std::int32_t lastSystemError() {
    return static_cast<std::int32_t>(::GetLastError());
}

bool succeeded(int result, std::int32_t& error) {
    error = result != 0 ? 0 : lastSystemError();
    return result != 0;
}

File openShared(const std::wstring& path, std::uint32_t access, std::uint32_t flags, std::int32_t& error) {
    constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    File file = fileOf(::CreateFileW(path.c_str(), access, kAll, nullptr, OPEN_EXISTING, flags, nullptr));
    error = file.isOpen() ? 0 : lastSystemError();
    return file;
}

File openForQuestions(const std::wstring& path, LinkUse links, std::int32_t& error) {
    const DWORD flags = FILE_FLAG_BACKUP_SEMANTICS | (links == LinkUse::stay ? FILE_FLAG_OPEN_REPARSE_POINT : 0);
    return openShared(path, FILE_READ_ATTRIBUTES, flags, error);
}

} // namespace tessera::platform
