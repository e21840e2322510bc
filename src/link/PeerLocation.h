// Which peer of those installed is the one to work with, and how it is started with a file. Free of state.
#pragma once

#include "exportscripts/AudioExportScriptList.h"

#include <string>
#include <string_view>
#include <vector>

namespace tessera {

// The newest "Tessera Max", whatever the versions of the others are; without one the newest of the rest. Among equal
// versions the first of the list. An empty script, of version 0, when there is none.
AudioExportScript choosePeer(const AudioExportScriptList& peers);

// The peer's command line: each template with its first "$PATH" filled by the file, quotes around a "$PATH" taken away,
// and "--tesx", which tells the peer that it was started for an exchange, in front of the last argument. Without a file
// the placeholders become empty and "--tesx" is left out; without templates there are no arguments at all. Texts are
// UTF-8.
std::vector<std::string> launchArguments(const std::vector<std::string>& templates, std::string_view file);

} // namespace tessera
