#include "support/ErrorNumbers.h"

#include <windows.h>

namespace tessera::testing_support {

const ErrorNumbers kErrorNumbers = {
    .transfer = ERROR_IO_DEVICE,
    .missing = ERROR_FILE_NOT_FOUND,
    .missingFolder = ERROR_PATH_NOT_FOUND,
    .fileOnTheWay = ERROR_PATH_NOT_FOUND,
    .notAFolder = ERROR_DIRECTORY,
    .aFolder = ERROR_ACCESS_DENIED,
    .longName = ERROR_FILENAME_EXCED_RANGE,
    .fullDisk = ERROR_DISK_FULL,
    .usedUpShare = ERROR_HANDLE_DISK_FULL,
    .readOnlyDisk = ERROR_WRITE_PROTECT,
    .noRight = ERROR_ACCESS_DENIED,
    .notOwner = ERROR_PRIVILEGE_NOT_HELD,
    .nameTaken = ERROR_ALREADY_EXISTS,
    .wrongDirection = ERROR_ACCESS_DENIED,
    .brokenPipe = ERROR_BROKEN_PIPE,
};

} // namespace tessera::testing_support
