#include "support/ErrorNumbers.h"

#include <cerrno>

namespace tessera::testing_support {

const ErrorNumbers kErrorNumbers = {
    .transfer = EIO,
    .missing = ENOENT,
    .missingFolder = ENOENT,
    .fileOnTheWay = ENOTDIR,
    .notAFolder = ENOTDIR,
    .aFolder = EISDIR,
    .longName = ENAMETOOLONG,
    .fullDisk = ENOSPC,
    .usedUpShare = EDQUOT,
    .readOnlyDisk = EROFS,
    .noRight = EACCES,
    .notOwner = EPERM,
    .nameTaken = EEXIST,
    .wrongDirection = EBADF,
    .brokenPipe = EPIPE,
};

} // namespace tessera::testing_support
