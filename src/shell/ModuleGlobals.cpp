#include "shell/ModuleGlobals.h"

#include "platform/Identity.h"

namespace tessera {

namespace {

constexpr std::size_t kNameLimit = 260;

} // namespace

ModuleGlobals& moduleGlobals() {
    static ModuleGlobals globals;
    return globals;
}

void noteModuleLoad() {
    moduleGlobals().handle = platform::moduleHandle();
    moduleGlobals().folder = folderOfModule(platform::modulePath());
}

std::u16string folderOfModule(std::u16string_view fileName) {
    const std::size_t separator = fileName.rfind(u'\\');
    if (fileName.size() > kNameLimit || separator == std::u16string_view::npos) {
        return {};
    }
    return std::u16string(fileName.substr(0, separator));
}

} // namespace tessera
