// mixProject: writes what a project sounds like to one sound file, in constant memory.
//
// Events are summed, a mono clip on every channel. WAV and AIFF get 32-bit float, so that nothing is cut off at full
// scale; FLAC gets 24 bits. The file appears under its name only when it is complete, and never in the place of a sound
// of the project.
#pragma once

#include "host/model/Project.h"
#include "host/program/Complaint.h"

#include <string>

namespace tessera::host {

// The comment is a remark that the file carries.
Complaint mixProject(Project& project, const std::string& path, const std::string& comment);

} // namespace tessera::host
