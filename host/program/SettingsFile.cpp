#include "host/program/SettingsFile.h"

#include "appservices/defaults/GlobalDefaults.h"
#include "host/text/HostTexts.h"
#include "host/text/Message.h"
#include "host/text/PathText.h"
#include "persistence/files/FFileSystem.h"
#include "persistence/objects/FObjectFiles.h"
#include "persistence/paths/FNPath.h"
#include "persistence/paths/IApplicationFolders.h"

#include <optional>

namespace tessera::host {
namespace {

constexpr char kExtension[] = ".xml";
// See FGlobalDefaultPool and FObjectFiles.
constexpr char kTrashedSuffix[] = " (Trashed)";
constexpr char kUnfinishedSuffix[] = "_old";

// Nothing where the user has no folder.
std::optional<FNPath> settingsFile(const char* suffix) {
    IApplicationFolders* const folders = applicationFoldersSource != nullptr ? applicationFoldersSource() : nullptr;
    const FNPath* const folder = folders != nullptr ? folders->folder(ApplicationFolder::userData) : nullptr;
    if (folder == nullptr || folder->getPath().isEmpty()) {
        return std::nullopt;
    }
    FString name(FGlobalDefaultPool::getBaseName());
    name.append(suffix);
    name.append(kExtension);
    return FNPath(name, *folder, PathKind::file);
}

std::string settingsPath(const char* suffix) {
    const std::optional<FNPath> file = settingsFile(suffix);
    return file ? pathText(*file) : std::string();
}

// The file that a save was about to replace when it was broken off takes its name back.
bool takeBack() {
    std::optional<FNPath> old = settingsFile(kUnfinishedSuffix);
    const std::optional<FNPath> file = settingsFile("");
    FFileSystem* const files = FFileSystem::getInstance();
    return files != nullptr && old && files->fileExists(*old) && files->move(*old, *file);
}

void beginAfresh(const Tell& tell) {
    const bool isDamaged = FObjectFiles::documentExists(FGlobalDefaultPool::getBaseName());
    if (isDamaged && !GlobalDefaults::trash()) {
        GlobalDefaults::setSaveGate([] { return false; });
        tell(message(hostTexts.settingsInTheWay));
    } else if (takeBack() && GlobalDefaults::load()) {
        tell(message(hostTexts.settingsTakenBack));
    } else if (isDamaged) {
        tell(message(hostTexts.settingsDamaged, settingsPath(kTrashedSuffix)));
    }
}

} // namespace

void loadSettings(const Tell& tell) {
    GlobalDefaults::setSaveGate(nullptr);
    if (!GlobalDefaults::load()) {
        beginAfresh(tell);
    }
    GlobalDefaults::restore();
}

void saveSettings(const Tell& tell) {
    if (settingsFile("") && !GlobalDefaults::save(GlobalDefaults::RunSavers::yes)) {
        tell(message(hostTexts.settingsNotSaved, settingsPath("")));
    }
}

} // namespace tessera::host
