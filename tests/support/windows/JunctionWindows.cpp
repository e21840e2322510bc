#include "support/windows/Junction.h"

#include <cstring>
#include <string>
#include <windows.h>

#include <winioctl.h>

namespace tessera::testing_support {

const char* makeJunction(const std::filesystem::path& path, const std::filesystem::path& target) {
    const std::wstring shown = std::filesystem::path(target).make_preferred().wstring();
    const std::wstring meant = L"\\??\\" + shown;
    const auto bytesOf = [](std::size_t units) { return static_cast<WORD>(units * sizeof(wchar_t)); };
    // Tag, length and two bytes of nothing; where the two names stand; the names, each with its end.
    std::wstring record(8, L'\0');
    const DWORD tag = IO_REPARSE_TAG_MOUNT_POINT;
    std::memcpy(record.data(), &tag, sizeof tag);
    record[2] = static_cast<wchar_t>(bytesOf(4 + meant.size() + 1 + shown.size() + 1));
    record[5] = static_cast<wchar_t>(bytesOf(meant.size()));
    record[6] = static_cast<wchar_t>(bytesOf(meant.size() + 1));
    record[7] = static_cast<wchar_t>(bytesOf(shown.size()));
    record.append(meant).append(1, L'\0').append(shown).append(1, L'\0');
    std::filesystem::create_directory(path);
    const HANDLE folder = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    DWORD none = 0;
    const bool made = ::DeviceIoControl(folder, FSCTL_SET_REPARSE_POINT, record.data(), bytesOf(record.size()), nullptr,
                                        0, &none, nullptr);
    ::CloseHandle(folder);
    return made ? nullptr : "no folder can stand for another here";
}

} // namespace tessera::testing_support
