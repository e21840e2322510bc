// GroupFileName: the name of the file that a group of settings stands in, when each has one of its own.
#pragma once

#include "foundation/text/FString.h"

#include <string_view>

namespace tessera {

// Any group name makes a name that is legal everywhere: the MD5 digest of its characters, 32 digits in upper case.
FString groupFileName(std::string_view groupName);

} // namespace tessera
