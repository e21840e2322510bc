// Script files come from other programs' installers. Whatever they hold, what was read is a script's own text: no empty
// argument, no text with a NUL, and the same again at a second reading.
#include "exportscripts/AudioExportScript.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const tessera::AudioExportScript script = tessera::parseScriptText(text);
    for (const std::string& argument : script.arguments) {
        require(!argument.empty() && argument.find('\0') == argument.npos);
    }
    const tessera::AudioExportScript again = tessera::parseScriptText(text);
    require(again.name == script.name && again.version == script.version && again.arguments == script.arguments);
    require(again.path.getFullPath() == script.path.getFullPath());
    require(!tessera::isAccepted(script) || script.version.major >= 7);
    return 0;
}
