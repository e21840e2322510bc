#include "exportscripts/AudioExportScript.h"

#include "exportscripts/KnownProducts.h"
#include "persistence/files/PathText.h"
#include "platform/Files.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <tinyxml2.h>

namespace tessera {

namespace {

// A script has some hundred bytes. What is larger is something else with that extension, and no reason to hold the
// host up.
constexpr std::int64_t kLargestFile = 1 << 20;

FString fromUtf8(const char* text) {
    FString result;
    result.assignUtf8(text);
    return result;
}

struct Field {
    std::string_view element;
    void (*read)(AudioExportScript& script, const char* text);
};

constexpr Field kFields[] = {
    {"Path", [](AudioExportScript& script, const char* text) { script.path = FNPath(fromUtf8(text), PathKind::file); }},
    {"Argument", [](AudioExportScript& script, const char* text) { script.arguments.emplace_back(text); }},
    {"Name", [](AudioExportScript& script, const char* text) { script.name = text; }},
    {"Version", [](AudioExportScript& script, const char* text) { script.version = parseVersion(text); }},
};

void readField(AudioExportScript& script, const tinyxml2::XMLElement& element) {
    const char* name = element.Name();
    const char* text = element.GetText();
    if (name == nullptr || text == nullptr || *text == '\0') {
        return;
    }
    const auto* field =
        std::find_if(std::begin(kFields), std::end(kFields), [name](const Field& row) { return row.element == name; });
    if (field != std::end(kFields)) {
        field->read(script, text);
    }
}

// Read by our own means and not by the library's: it opens by names of the C library, and would wait for the other end
// of a pipe that somebody left in the folder.
std::string readFile(const FNPath& path) {
    std::int32_t error = 0;
    platform::FileOpenFlags flags;
    flags.read = true;
    flags.shareRead = true;
    platform::File file = platform::File::open(PathText(path), flags, platform::FileDisposition::openExisting, error);
    const std::int64_t size = file.isOpen() ? file.size(error) : 0;
    if (size <= 0 || size > kLargestFile) {
        return {};
    }
    std::string bytes(static_cast<std::size_t>(size), '\0');
    const std::int64_t count = file.read(bytes.data(), size, error);
    bytes.resize(static_cast<std::size_t>(std::max<std::int64_t>(count, 0)));
    return bytes;
}

} // namespace

const FFileType& audioExportScriptType() {
    static const FFileType& type = *new FFileType("Audio Export Post Process Script", "aepp");
    return type;
}

AudioExportScript parseScript(const FNPath& file) {
    return parseScriptText(readFile(file));
}

AudioExportScript parseScriptText(std::string_view xml) {
    AudioExportScript script;
    tinyxml2::XMLDocument document;
    // The result doesn't matter: what isn't XML has no such elements.
    static_cast<void>(document.Parse(xml.data(), xml.size()));
    const tinyxml2::XMLElement* root = document.FirstChildElement("AudioExportPostProcess");
    const tinyxml2::XMLElement* executable = root != nullptr ? root->FirstChildElement("Executable") : nullptr;
    if (executable == nullptr) {
        return script;
    }
    for (const auto* child = executable->FirstChildElement(); child != nullptr; child = child->NextSiblingElement()) {
        readField(script, *child);
    }
    return script;
}

bool isAccepted(const AudioExportScript& script) {
    return std::any_of(std::begin(kKnownProducts), std::end(kKnownProducts), [&script](const ProductTable& table) {
        return std::find(table.names.begin(), table.names.end(), script.name) != table.names.end() &&
               script.version >= parseVersion(table.minimumVersion);
    });
}

} // namespace tessera
