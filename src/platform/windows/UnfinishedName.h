// UnfinishedName: names for files that get their own when they are complete.
#pragma once

#include "platform/windows/WideText.h"

#include <string>

namespace tessera::platform {

// A name that no other process, and no other call of this one, uses at the same time. What makes it hidden is the
// file's attribute.
std::u16string unfinishedName();

} // namespace tessera::platform
