// SystemErrors: the system's error numbers, sorted into the troubles that users know, and as the system's own words.
#pragma once

#include <cstdint>
#include <string>

namespace tessera::platform {

enum class ErrorTrouble {
    none,
    transfer,
    notFound,
    nameTooLong,
    diskFull,
    readOnly,
    notAllowed,
    other,
};

// From any thread.
ErrorTrouble troubleOf(std::int32_t error);

// UTF-8, in the user's language where the program has set one. From any thread.
std::string describeError(std::int32_t error);

} // namespace tessera::platform
