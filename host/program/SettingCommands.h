// Words of the script that look at, or change, what the host remembers: see HostSettings and HostLanguage.
#pragma once

#include "host/program/Application.h"
#include "host/program/Complaint.h"

#include <optional>
#include <string>
#include <vector>

namespace tessera::host {

using Words = std::vector<std::string>;

// Reads the point as the decimal sign, whatever the locale. Nothing for what isn't finite.
std::optional<double> numberOf(const std::string& word);

// "open FILE", "open" for the project used last that is still there.
Complaint openProject(Application& application, const Words& words);
// "recent"
Complaint showRecent(Application& application, const Words& words);
// "settings"
Complaint showSettings(Application& application, const Words& words);
// "set wait S"
Complaint changeSetting(Application& application, const Words& words);
// "language", "language CODE"
Complaint language(Application& application, const Words& words);

} // namespace tessera::host
