// ProjectFile: a project as JSON.
//
//   { "format": "tesx-host project", "version": 1,
//     "pool":   [ "Audio/take.wav", "/home/anna/piano.flac" ],
//     "cycle":  [ 0.0, 4.0 ],
//     "tracks": [ { "name": "Track 1",
//                   "events": [ { "name": "take.wav", "clip": 0, "start": 1.5, "length": 3.0, "offset": 2.0,
//                                 "restrictions": 0 },
//                               { "name": "Notes", "start": 8.0, "length": 4.0 } ] } ] }
//
// Times are seconds. "clip" is a place in the pool, and an event without one holds notes. Files inside the project's
// folder are told from there, with "/", so that the folder can be moved; others by their full path.
#pragma once

#include "host/model/Project.h"
#include "host/model/SafeSave.h"
#include "host/program/Complaint.h"
#include "host/services/Transport.h"

#include <memory>
#include <string>

namespace tessera::host {

inline constexpr char kProjectExtension[] = ".tesxproject";

Complaint saveProject(Project& project, Transport& transport, const std::string& path,
                      SaveSteps& steps = platformSaveSteps());

// Null with a complaint when the file is missing, is no project, or names sound files that can't be read.
std::shared_ptr<Project> readProject(const std::shared_ptr<HostCore>& core, const std::string& path,
                                     Transport& transport, Complaint* complaint);

} // namespace tessera::host
