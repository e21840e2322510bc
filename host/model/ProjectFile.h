// ProjectFile: a project as an object document, XML with the root tag "TesxProject".
//
//   <TesxProject>
//      <rootObjects>
//         <root name="project" ID="1"/>
//      </rootObjects>
//
//      <obj class="HostProject" ID="1">
//         <int name="version" value="2"/>
//         <float name="cycleLeft" value="0"/>
//         <float name="cycleRight" value="4"/>
//         <list name="pool" type="obj">
//            <obj class="HostClip" ID="2">
//               <string name="path" value="Audio/take.wav"/>
//            </obj>
//         </list>
//         <list name="tracks" type="obj">
//            <obj class="HostTrack" ID="3">
//               <string name="name" value="Track 1"/>
//               <list name="events" type="obj">
//                  <obj class="HostEvent" ID="4">
//                     <string name="name" value="take.wav"/>
//                     <float name="start" value="1.5"/>
//                     <float name="length" value="3"/>
//                     <float name="offset" value="2"/>
//                     <int name="restrictions" value="0"/>
//                     <obj name="clip" ID="2"/>
//                  </obj>
//               </list>
//            </obj>
//         </list>
//      </obj>
//
//   </TesxProject>
//
// Times are seconds. An event without a clip holds notes. Files inside the project's folder are told from there, with
// "/", so that the folder can be moved; others by their full path.
#pragma once

#include "host/model/Project.h"
#include "host/model/SafeSave.h"
#include "host/program/Complaint.h"
#include "host/services/Transport.h"

#include <memory>
#include <string>

namespace tessera::host {

inline constexpr char kProjectExtension[] = ".tesxproject";

// Paths are full ones. Every clip that an event plays gets its place in the pool. After a complaint the file is what it
// was.
Complaint saveProject(Project& project, Transport& transport, const std::string& path,
                      SaveSteps& steps = platformSaveSteps());

// Null with a complaint when the file is missing, no file, larger than a document can be, no project, or names sound
// files that can't be read.
std::shared_ptr<Project> readProject(const std::shared_ptr<HostCore>& core, const std::string& path,
                                     Transport& transport, Complaint* complaint);

} // namespace tessera::host
