#include "peer/ExportScriptText.h"

#include <string_view>

namespace tessera::peer {
namespace {

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string element(std::string_view name, std::string_view text) {
    const std::string tag(name);
    return "        <" + tag + ">" + escaped(text) + "</" + tag + ">\n";
}

} // namespace

std::string exportScriptText(const std::string& executable, const std::string& editorCommand) {
    // The module puts "--tesx" in front of the last argument, which has to be the file.
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<AudioExportPostProcess>\n"
           "    <Executable>\n" +
           element("Name", "Tessera Lite") + element("Version", "9.0.0") + element("Path", executable) +
           element("Argument", "--editor") + element("Argument", editorCommand) + element("Argument", "$PATH") +
           "    </Executable>\n"
           "</AudioExportPostProcess>\n";
}

} // namespace tessera::peer
