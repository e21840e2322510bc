// The language that the host speaks: shown, and chosen for this run and all later ones. Main thread.
#pragma once

#include "host/program/Complaint.h"

#include <string>

namespace tessera::host {

// One line: the language in use, and all that there are.
std::string describeLanguage();

// By its code of two letters, one of those that describeLanguage() tells. It is written to "lang.cfg" in the user's
// folder; after a complaint the language is what it was.
Complaint chooseLanguage(const std::string& code);

} // namespace tessera::host
