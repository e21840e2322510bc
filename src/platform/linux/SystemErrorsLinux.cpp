#include "platform/SystemErrors.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>

namespace tessera::platform {

namespace {

struct KnownError {
    int number;
    ErrorTrouble trouble;
};

constexpr KnownError kErrors[] = {
    {0, ErrorTrouble::none},
    {EIO, ErrorTrouble::transfer},
    {ENXIO, ErrorTrouble::transfer},
    {ENODEV, ErrorTrouble::transfer},
    {ESTALE, ErrorTrouble::transfer},
    {EREMOTEIO, ErrorTrouble::transfer},
    {ENOENT, ErrorTrouble::notFound},
    {ENOTDIR, ErrorTrouble::notFound},
    {ENAMETOOLONG, ErrorTrouble::nameTooLong},
    {ENOSPC, ErrorTrouble::diskFull},
    {EDQUOT, ErrorTrouble::diskFull},
    {EROFS, ErrorTrouble::readOnly},
    {EACCES, ErrorTrouble::notAllowed},
    {EPERM, ErrorTrouble::notAllowed},
    {EBUSY, ErrorTrouble::notAllowed},
    {EEXIST, ErrorTrouble::notAllowed},
    {EISDIR, ErrorTrouble::notAllowed},
    {ENOTEMPTY, ErrorTrouble::notAllowed},
    {ETXTBSY, ErrorTrouble::notAllowed},
};

} // namespace

ErrorTrouble troubleOf(std::int32_t error) {
    const auto* known = std::find_if(std::begin(kErrors), std::end(kErrors),
                                     [error](const KnownError& row) { return row.number == error; });
    return known == std::end(kErrors) ? ErrorTrouble::other : known->trouble;
}

std::string describeError(std::int32_t error) {
    char buffer[256];
    // The GNU form: the text may or may not stand in the buffer.
    return strerror_r(error, buffer, sizeof buffer);
}

} // namespace tessera::platform
