#include "exportscripts/AudioExportScriptList.h"

#include "discovery/identity/ApplicationInfo.h"
#include "exportscripts/KnownProducts.h"
#include "persistence/files/FFileSystem.h"
#include "persistence/files/FNFileIterator.h"
#include "persistence/paths/SpecialFolders.h"

namespace tessera {

namespace {

constexpr const char* kFolderName = "Audio Export Post Process Scripts";

} // namespace

FNPath scriptsFolder() {
    const FNPath* base = userFolder(UserFolder::commonApplicationData);
    FFileSystem* files = FFileSystem::getInstance();
    if (base == nullptr || files == nullptr) {
        return FNPath();
    }
    FNPath folder(*base);
    folder.descend(applicationInfo().vendorFolderName(), PathKind::folder);
    folder.descend(kFolderName, PathKind::folder);
    return files->folderExists(folder) ? folder : FNPath();
}

AudioExportScriptList::AudioExportScriptList() : AudioExportScriptList(scriptsFolder()) {}

AudioExportScriptList::AudioExportScriptList(const FNPath& folder) {
    scan(folder);
}

AudioExportScriptList AudioExportScriptList::select(ScriptKind kind) const {
    Scripts selected;
    for (const ProductTable& table : kKnownProducts) {
        if (table.kind != kind) {
            continue;
        }
        for (const std::string_view name : table.names) {
            const auto [first, last] = scriptsOf(name);
            selected.insert(first, last);
        }
    }
    return AudioExportScriptList(std::move(selected));
}

void AudioExportScriptList::scan(const FNPath& folder) {
    // Links lead to the scripts; types are asked only of what may be one.
    const auto entries = FRefPtr<FNFileIterator>::adopt(new FNFileIterator(folder, true, false));
    while (FPath* entry = entries->next()) {
        auto* file = cmCast<FNPath>(entry);
        if (file == nullptr || !file->getFileType().isEqual(&audioExportScriptType())) {
            continue;
        }
        AudioExportScript script = parseScript(*file);
        if (isAccepted(script)) {
            std::string name = script.name;
            scripts_.emplace(std::move(name), std::move(script));
        }
    }
}

} // namespace tessera
