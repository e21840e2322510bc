// ErrorNumbers: the numbers by which the system reports what went wrong.
#pragma once

#include <cstdint>

namespace tessera::testing_support {

struct ErrorNumbers {
    std::int32_t transfer;
    std::int32_t missing;
    // Of a path whose folder isn't there, or is a file.
    std::int32_t missingFolder;
    std::int32_t fileOnTheWay;
    // Of what should be a folder and is a file, and the other way round.
    std::int32_t notAFolder;
    std::int32_t aFolder;
    std::int32_t longName;
    std::int32_t fullDisk;
    std::int32_t usedUpShare;
    std::int32_t readOnlyDisk;
    std::int32_t noRight;
    std::int32_t notOwner;
    std::int32_t nameTaken;
    // Of a transfer in a direction for which the file isn't open.
    std::int32_t wrongDirection;
    std::int32_t brokenPipe;
};

extern const ErrorNumbers kErrorNumbers;

} // namespace tessera::testing_support
