// AudioExportScript: one installed application that finished audio files can be handed to: its product name, its
// version, its executable and the arguments to start it with. Applications leave such a script when they are installed;
// this program only reads them.
//
// The file is XML of the type "aepp":
//
//     <AudioExportPostProcess>
//       <Executable>
//         <Name>Tessera Max</Name> <Version>9.0.0</Version> <Path>/opt/tessera/tessera</Path>
//         <Argument>"$PATH"</Argument>
//       </Executable>
//     </AudioExportPostProcess>
//
// Of the two outer elements the first one is read. "Argument" may be repeated; of the others the last one counts. An
// element without text counts as absent, and everything else in the file is ignored. A plain value.
#pragma once

#include "exportscripts/AppVersion.h"
#include "persistence/paths/FNPath.h"

#include <string>
#include <string_view>
#include <vector>

namespace tessera {

struct AudioExportScript {
    // UTF-8.
    std::string name;
    AppVersion version;
    FNPath path;
    // UTF-8, in the order of the file; "$PATH" stands for the audio file.
    std::vector<std::string> arguments;
};

// "Audio Export Post Process Script", "aepp". Shared, not to be changed.
const FFileType& audioExportScriptType();

// The script in a file. What can't be read, or isn't told, stays empty; a file that is no script gives an empty one.
AudioExportScript parseScript(const FNPath& file);
AudioExportScript parseScriptText(std::string_view xml);

// Whether the name is that of a known product, and the version one that works with it.
bool isAccepted(const AudioExportScript& script);

} // namespace tessera
