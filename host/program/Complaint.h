// Complaint: why something didn't happen, on one line that starts in lower case: what, where, what was expected, what
// to do next. Empty when all went well.
#pragma once

#include <string>

namespace tessera::host {

using Complaint = std::string;

} // namespace tessera::host
