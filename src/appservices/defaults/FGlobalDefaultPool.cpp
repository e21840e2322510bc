#include "appservices/defaults/FGlobalDefaultPool.h"

#include "appservices/defaults/GroupFileName.h"
#include "foundation/object/FSingletonList.h"
#include "persistence/attributes/FAttributes.h"
#include "persistence/files/FFileSystem.h"
#include "persistence/objects/FObjectDocument.h"
#include "persistence/objects/FObjectFiles.h"
#include "persistence/paths/FNPath.h"
#include "persistence/streams/FStream.h"
#include "persistence/streams/FileOpenMode.h"

namespace tessera {

namespace {

constexpr const char* kRootTag = "Defaults";
constexpr const char* kAutoSaverTag = "AutoSaver";
constexpr const char* kAutoSaverFile = "AutoSaver.xml";
constexpr const char* kOwnGroup = "FGlobalDefaultPool";
// The spelling is that of the files in the field.
constexpr const char* kExtractedKey = "Preferences extraced";
constexpr const char* kBackupSuffix = " (Backup)";
constexpr const char* kTrashedSuffix = " (Trashed)";
constexpr const char* kNewSuffix = " (New)";

FString& baseName() {
    static FString name("Defaults");
    return name;
}

FString nameWith(const char* suffix) {
    FString name(baseName());
    name.append(suffix);
    return name;
}

const FFileType& groupFileType() {
    static const FFileType type("XML File", "xml", 0u, FStringRef(), "text/xml");
    return type;
}

FNPath userPath(const FStringRef& name, PathKind kind) {
    return FNPath(name, PathFolder::userData, kind);
}

FNPath userFile(const FStringRef& name) {
    FNPath path = userPath(name, PathKind::file);
    path.setFileType(FObjectFiles::documentType());
    path.ensureExtension(false);
    return path;
}

FNPath groupFile(const FNPath& folder, std::string_view group) {
    FNPath path(groupFileName(group), folder, PathKind::file);
    path.setFileType(groupFileType());
    path.ensureExtension(false);
    return path;
}

// Without a folder for the user's data a name alone would mean whatever folder the process is in.
bool isPlaced(const FNPath& path) {
    return !path.getPath().isEmpty() && !baseName().isEmpty();
}

bool folderIsThere(const FNPath& folder) {
    FFileSystem* files = FFileSystem::getInstance();
    return files != nullptr && isPlaced(folder) && files->folderExists(folder);
}

bool fileIsThere(const FNPath& file) {
    FFileSystem* files = FFileSystem::getInstance();
    return files != nullptr && isPlaced(file) && files->fileExists(file);
}

bool deleteIfThere(const FNPath& file) {
    return !fileIsThere(file) || FFileSystem::getInstance()->deleteFile(file);
}

bool moveEntry(FNPath from, const FNPath& to) {
    FFileSystem* files = FFileSystem::getInstance();
    return files != nullptr && files->move(from, to);
}

bool readObject(FNPath file, const char* rootTag, CmObject& object) {
    FStream* stream =
        fileIsThere(file) ? FFileSystem::getInstance()->openFile(file, FileOpenMode::read, nullptr) : nullptr;
    if (stream == nullptr) {
        return false;
    }
    const bool read = FObjectDocument::loadObject(*stream, rootTag, object);
    FFileSystem::getInstance()->closeStream(stream);
    return read;
}

bool writeObject(FNPath file, const char* rootTag, const CmObject& object) {
    FFileSystem* files = FFileSystem::getInstance();
    FStream* stream = files != nullptr ? files->createFile(file, FileOpenMode::write, nullptr) : nullptr;
    if (stream == nullptr) {
        return false;
    }
    const bool written = FObjectDocument::saveObject(*stream, rootTag, object);
    files->closeStream(stream);
    return written;
}

} // namespace

FGlobalDefaultPool* FGlobalDefaultPool::getInstance(bool create) {
    static constinit FSingleton<FGlobalDefaultPool> instance([] { return new FGlobalDefaultPool; });
    return instance.get(create);
}

const FString& FGlobalDefaultPool::getBaseName() {
    return baseName();
}

void FGlobalDefaultPool::setBaseName(const FStringRef& name) {
    baseName() = name;
}

bool FGlobalDefaultPool::load() {
    const bool admitted = loadGate_ == nullptr || loadGate_();
    setLazyLoading(admitted);
    if (!admitted) {
        return false;
    }
    needsExtraction_ = false;
    return noteResult(splitFiles_ ? loadSplitFiles() : loadOneFile());
}

bool FGlobalDefaultPool::hasExtractedKey() {
    const FDefaults* own = getGroup(kOwnGroup, FDefaults::kNoVersion, Missing::left);
    return own != nullptr && own->has(kExtractedKey);
}

bool FGlobalDefaultPool::loadOneFile() {
    const bool loaded = FObjectFiles::loadObject(baseName(), kRootTag, *this);
    needsExtraction_ = loaded && !hasExtractedKey();
    setInt(kOwnGroup, kExtractedKey, 1);
    return loaded;
}

bool FGlobalDefaultPool::loadSplitFiles() {
    const FNPath folder = userPath(baseName(), PathKind::folder);
    if (!folderIsThere(folder)) {
        // The files of a program that still had one.
        const bool loaded = FObjectFiles::loadObject(baseName(), kRootTag, *this);
        needsExtraction_ = loaded && !hasExtractedKey();
        return loaded;
    }
    // Groups come when they are asked for.
    dropGroups();
    const auto data = FRefPtr<FAttributes>::adopt(new FAttributes);
    const bool read = readObject(FNPath(kAutoSaverFile, folder, PathKind::file), kAutoSaverTag, *data);
    setPendingAutoSaverData(read ? data.get() : nullptr);
    return true;
}

FDefaults* FGlobalDefaultPool::loadGroup(const char* name) {
    const FNPath folder = userPath(baseName(), PathKind::folder);
    if (!splitFiles_ || !isPlaced(folder)) {
        return nullptr;
    }
    auto group = FRefPtr<FDefaults>::adopt(new FDefaults);
    if (!readObject(groupFile(folder, name), kRootTag, *group)) {
        ownFiles_.erase(name);
        return nullptr;
    }
    ownFiles_.emplace(name);
    // Whatever the file says: it was found under this one.
    group->setGroupName(name);
    return group.detach();
}

void FGlobalDefaultPool::removeGroup(const char* name) {
    FDefaultPool::removeGroup(name);
    if (name != nullptr && deletedGroups().contains(name)) {
        ownFiles_.emplace(name);
    }
}

void FGlobalDefaultPool::restore() {
    restoreAutoSavers();
    for (std::size_t i = 0; i < restoreCallbacks_.size(); ++i) {
        restoreCallbacks_[i]();
    }
    restored_ = true;
}

bool FGlobalDefaultPool::save(RunSavers runSavers) {
    // What was never handed out would be lost.
    if (!restored_) {
        return false;
    }
    if (runSavers == RunSavers::yes) {
        for (std::size_t i = 0; i < saveCallbacks_.size(); ++i) {
            saveCallbacks_[i]();
        }
    }
    if (saveGate_ != nullptr && !saveGate_()) {
        return true;
    }
    return noteResult(splitFiles_ ? saveSplitFiles() : saveOneFile());
}

bool FGlobalDefaultPool::saveOneFile() {
    if (!FObjectFiles::saveObject(baseName(), kRootTag, *this)) {
        return false;
    }
    deletedGroups().clear();
    return true;
}

bool FGlobalDefaultPool::saveSplitFiles() {
    const FNPath folder = userPath(baseName(), PathKind::folder);
    FFileSystem* files = FFileSystem::getInstance();
    if (files == nullptr || !isPlaced(folder)) {
        return false;
    }
    const bool moves = fileIsThere(userFile(baseName())) && !folderIsThere(folder);
    if (moves ? !moveToFolder(folder) : !files->createFolder(folder)) {
        return false;
    }
    const bool complete = moves || saveFolder(folder);
    deleteRemovedGroups(folder);
    // It may hold what couldn't be written now.
    if (complete) {
        deleteIfThere(userFile(baseName()));
    }
    return complete;
}

// From the one file. Once there is a folder that file isn't read any more, so the folder gets its name as a whole.
bool FGlobalDefaultPool::moveToFolder(const FNPath& folder) {
    const FNPath fresh = userPath(nameWith(kNewSuffix), PathKind::folder);
    FFileSystem* files = FFileSystem::getInstance();
    if ((files->folderExists(fresh) && !files->deleteFolder(fresh)) || !files->createFolder(fresh)) {
        return false;
    }
    const bool moved = saveFolder(fresh) && moveEntry(fresh, folder);
    if (!moved) {
        files->deleteFolder(fresh);
    }
    return moved;
}

bool FGlobalDefaultPool::saveFolder(const FNPath& folder) {
    const bool complete = saveGroups(folder);
    return (!hasAutoSavers() || saveAutoSaverFile(folder)) && complete;
}

bool FGlobalDefaultPool::saveGroups(const FNPath& folder) {
    bool complete = true;
    groups().forEach([&](std::string_view name, const FDefaults& group) {
        complete = saveGroup(folder, name, group) && complete;
        return true;
    });
    return complete;
}

bool FGlobalDefaultPool::saveGroup(const FNPath& folder, std::string_view name, const FDefaults& group) {
    const FNPath file = groupFile(folder, name);
    if (!group.isEmpty()) {
        ownFiles_.emplace(name);
        return writeObject(file, kRootTag, group);
    }
    // The file of a group that became empty would bring its values back.
    return !ownFiles_.contains(std::string(name)) || deleteIfThere(file);
}

void FGlobalDefaultPool::deleteRemovedGroups(const FNPath& folder) {
    std::erase_if(deletedGroups(),
                  [&folder](const std::string& name) { return deleteIfThere(groupFile(folder, name)); });
}

bool FGlobalDefaultPool::saveAutoSaverFile(const FNPath& folder) {
    const auto data = FRefPtr<FAttributes>::adopt(new FAttributes);
    return storeAutoSavers(*data) && writeObject(FNPath(kAutoSaverFile, folder, PathKind::file), kAutoSaverTag, *data);
}

bool FGlobalDefaultPool::noteResult(bool done) {
    setLastError(done ? 0 : 1);
    return done;
}

bool FGlobalDefaultPool::backup() {
    return splitFiles_ ? backupFolder() : FObjectFiles::backupDocument(baseName());
}

bool FGlobalDefaultPool::backupFolder() {
    const FNPath folder = userPath(baseName(), PathKind::folder);
    const FNPath target = userPath(nameWith(kBackupSuffix), PathKind::folder);
    if (!folderIsThere(folder)) {
        return false;
    }
    FFileSystem* files = FFileSystem::getInstance();
    return (!files->folderExists(target) || files->deleteFolder(target)) && files->copyFolder(folder, target, nullptr);
}

bool FGlobalDefaultPool::restoreBackup() {
    const bool restored = splitFiles_ ? restoreFolder() : FObjectFiles::restoreDocument(baseName());
    if (restored) {
        // The files are those of another time, in which nothing had been removed.
        deletedGroups().clear();
    }
    return restored;
}

bool FGlobalDefaultPool::restoreFolder() {
    const FNPath folder = userPath(baseName(), PathKind::folder);
    const FNPath source = userPath(nameWith(kBackupSuffix), PathKind::folder);
    if (!folderIsThere(source)) {
        return false;
    }
    FFileSystem* files = FFileSystem::getInstance();
    return (!files->folderExists(folder) || files->deleteFolder(folder)) && moveEntry(source, folder);
}

bool FGlobalDefaultPool::trash() {
    const bool trashed = splitFiles_ ? deleteFolder() : putFileAside();
    if (trashed) {
        deletedGroups().clear();
    }
    return trashed;
}

bool FGlobalDefaultPool::deleteFolder() {
    const FNPath folder = userPath(baseName(), PathKind::folder);
    return folderIsThere(folder) && FFileSystem::getInstance()->deleteFolder(folder);
}

bool FGlobalDefaultPool::putFileAside() {
    const FNPath file = userFile(baseName());
    const FNPath trashed = userFile(nameWith(kTrashedSuffix));
    return fileIsThere(file) && deleteIfThere(trashed) && moveEntry(file, trashed);
}

} // namespace tessera
