#include "shell/ModuleGlobals.h"

#include "platform/Identity.h"

namespace tessera {

namespace {

constexpr std::size_t kNameLimit = 260;

} // namespace

ModuleGlobals& moduleGlobals() {
    // Never destroyed: a host may release the factory when the exit handlers have run already.
    static ModuleGlobals& globals = *new ModuleGlobals;
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
