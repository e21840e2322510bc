#include "platform/SystemErrors.h"

#include "platform/windows/WideText.h"

#include <algorithm>
#include <iterator>
#include <windows.h>

namespace tessera::platform {

namespace {

// The compiler's headers lack it.
constexpr DWORD kDiskQuotaExceeded = 1295;

struct KnownError {
    DWORD number;
    ErrorTrouble trouble;
};

constexpr KnownError kErrors[] = {
    {ERROR_SUCCESS, ErrorTrouble::none},
    {ERROR_CRC, ErrorTrouble::transfer},
    {ERROR_SEEK, ErrorTrouble::transfer},
    {ERROR_NOT_DOS_DISK, ErrorTrouble::transfer},
    {ERROR_SECTOR_NOT_FOUND, ErrorTrouble::transfer},
    {ERROR_WRITE_FAULT, ErrorTrouble::transfer},
    {ERROR_READ_FAULT, ErrorTrouble::transfer},
    {ERROR_GEN_FAILURE, ErrorTrouble::transfer},
    {ERROR_NOT_READY, ErrorTrouble::transfer},
    {ERROR_BAD_UNIT, ErrorTrouble::transfer},
    {ERROR_IO_DEVICE, ErrorTrouble::transfer},
    {ERROR_DISK_CORRUPT, ErrorTrouble::transfer},
    {ERROR_FILE_CORRUPT, ErrorTrouble::transfer},
    {ERROR_DEVICE_NOT_CONNECTED, ErrorTrouble::transfer},
    {ERROR_UNRECOGNIZED_VOLUME, ErrorTrouble::transfer},
    {ERROR_DEV_NOT_EXIST, ErrorTrouble::transfer},
    {ERROR_NETNAME_DELETED, ErrorTrouble::transfer},
    {ERROR_UNEXP_NET_ERR, ErrorTrouble::transfer},
    {ERROR_FILE_NOT_FOUND, ErrorTrouble::notFound},
    {ERROR_PATH_NOT_FOUND, ErrorTrouble::notFound},
    {ERROR_INVALID_DRIVE, ErrorTrouble::notFound},
    {ERROR_INVALID_NAME, ErrorTrouble::notFound},
    {ERROR_BAD_PATHNAME, ErrorTrouble::notFound},
    {ERROR_BAD_NETPATH, ErrorTrouble::notFound},
    {ERROR_BAD_NET_NAME, ErrorTrouble::notFound},
    {ERROR_NO_MORE_FILES, ErrorTrouble::notFound},
    {ERROR_DIRECTORY, ErrorTrouble::notFound},
    {ERROR_FILENAME_EXCED_RANGE, ErrorTrouble::nameTooLong},
    {ERROR_BUFFER_OVERFLOW, ErrorTrouble::nameTooLong},
    {ERROR_DISK_FULL, ErrorTrouble::diskFull},
    {ERROR_HANDLE_DISK_FULL, ErrorTrouble::diskFull},
    {kDiskQuotaExceeded, ErrorTrouble::diskFull},
    {ERROR_WRITE_PROTECT, ErrorTrouble::readOnly},
    {ERROR_ACCESS_DENIED, ErrorTrouble::notAllowed},
    {ERROR_SHARING_VIOLATION, ErrorTrouble::notAllowed},
    {ERROR_LOCK_VIOLATION, ErrorTrouble::notAllowed},
    {ERROR_NETWORK_ACCESS_DENIED, ErrorTrouble::notAllowed},
    {ERROR_FILE_EXISTS, ErrorTrouble::notAllowed},
    {ERROR_ALREADY_EXISTS, ErrorTrouble::notAllowed},
    {ERROR_CANNOT_MAKE, ErrorTrouble::notAllowed},
    {ERROR_CURRENT_DIRECTORY, ErrorTrouble::notAllowed},
    {ERROR_DIR_NOT_EMPTY, ErrorTrouble::notAllowed},
    {ERROR_BUSY, ErrorTrouble::notAllowed},
    {ERROR_USER_MAPPED_FILE, ErrorTrouble::notAllowed},
    {ERROR_PRIVILEGE_NOT_HELD, ErrorTrouble::notAllowed},
};

// The system ends its sentences with an end of line.
std::wstring_view withoutLineEnd(std::wstring_view text) {
    const std::size_t last = text.find_last_not_of(L" \r\n");
    return text.substr(0, last == std::wstring_view::npos ? 0 : last + 1);
}

} // namespace

ErrorTrouble troubleOf(std::int32_t error) {
    const auto* known = std::find_if(std::begin(kErrors), std::end(kErrors), [error](const KnownError& row) {
        return row.number == static_cast<DWORD>(error);
    });
    return known == std::end(kErrors) ? ErrorTrouble::other : known->trouble;
}

std::string describeError(std::int32_t error) {
    wchar_t* text = nullptr;
    // The place for the text's address goes in as if it were the buffer.
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                       nullptr, static_cast<DWORD>(error), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    if (length == 0) {
        // Not every number has words.
        return "Error " + std::to_string(error);
    }
    std::string description = utf8Of(withoutLineEnd({text, length}));
    LocalFree(text);
    return description;
}

} // namespace tessera::platform
