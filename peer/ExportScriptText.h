// The export script that tells the hosts about this program: an XML text for a file with the extension "aepp" in the
// folder "Marlgrove/Audio Export Post Process Scripts" below the machine-wide application data.
#pragma once

#include <string>

namespace tessera::peer {

// Names the program at executable (an absolute native path) as an edition of the peer, started with the given editor
// command and the file. All text is UTF-8; characters that XML reserves are written as entities.
std::string exportScriptText(const std::string& executable, const std::string& editorCommand);

} // namespace tessera::peer
