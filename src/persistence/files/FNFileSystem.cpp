#include "persistence/files/FNFileSystem.h"

#include "foundation/messages/FMessage.h"
#include "foundation/messages/FMessenger.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/archives/FArchiveManager.h"
#include "persistence/archives/VirtualPath.h"
#include "persistence/files/FFastNamer.h"
#include "persistence/files/FNFileIterator.h"
#include "persistence/files/FileChangeHub.h"
#include "persistence/files/FileCopy.h"
#include "persistence/files/FileSystemPointer.h"
#include "persistence/files/FolderTree.h"
#include "persistence/files/NameCleaning.h"
#include "persistence/files/PathText.h"
#include "persistence/paths/PathRules.h"
#include "persistence/streams/FFileStream.h"
#include "persistence/urls/UrlMetaHandler.h"
#include "platform/DesktopOpener.h"
#include "platform/FileEntries.h"
#include "platform/NativePath.h"
#include "platform/VolumeWatch.h"
#include "platform/Volumes.h"

#include <optional>
#include <string>

namespace tessera {

namespace {

constexpr std::uint32_t kMakesFolders = FileOpenMode::write | FileOpenMode::createFolders;
constexpr const char* kLinkExtension = ".lnk";

platform::FileOpenFlags openFlags(std::uint32_t mode) {
    platform::FileOpenFlags flags;
    flags.read = (mode & FileOpenMode::read) != 0;
    flags.write = (mode & FileOpenMode::write) != 0;
    flags.shareRead = (mode & FileOpenMode::shareRead) != 0;
    flags.shareWrite = (mode & FileOpenMode::shareWrite) != 0;
    flags.unbuffered = (mode & FileOpenMode::unbuffered) != 0;
    flags.deleteOnClose = (mode & FileOpenMode::temporary) != 0;
    return flags;
}

FStream* streamOf(platform::File file, const FPath& path, std::uint32_t mode) {
    const NativeForm native(path);
    const bool unbuffered = (mode & FileOpenMode::unbuffered) != 0;
    const std::uint32_t sectorSize = unbuffered ? platform::sectorSizeOf(PathText(path)) : 0;
    return new FFileStream(std::move(file), *native, mode, sectorSize);
}

// What lies in an archive is the business of its mount: the work's answer, or `nothing` when the archive can't be had.
template <class Answer, class Work>
Answer inArchive(const FPath& path, Answer nothing, Work work) {
    FArchiveManager* archives = FArchiveManager::getInstance();
    FFileSystem* mounted = archives != nullptr ? archives->getFileSystem(path) : nullptr;
    return mounted != nullptr ? work(*mounted) : nothing;
}

// A URL of another scheme than "file", which its handler opens; null for any other path.
FUrl* foreignUrl(FPath& path) {
    FUrl* url = cmCast<FUrl>(&path);
    return url != nullptr && !url->isFileScheme() ? url : nullptr;
}
const FUrl* foreignUrl(const FPath& path) {
    return foreignUrl(const_cast<FPath&>(path));
}

// The path takes the name as the folder spells it, where it may be spelled otherwise.
void adoptStoredName(FPath& path) {
    FNPath* native = cmCast<FNPath>(&path);
    const auto stored = native != nullptr ? platform::storedName(PathText(path)) : std::nullopt;
    if (stored) {
        native->setName(FStringRef(stored->data(), static_cast<std::int32_t>(stored->size())));
    }
}

void tell(std::int32_t* error, std::int32_t value) {
    if (error != nullptr) {
        *error = value;
    }
}

std::u16string_view withoutEnd(std::u16string_view path) {
    return path.size() > 1 && path.back() == kPathSeparator ? path.substr(0, path.size() - 1) : path;
}

// Whether `inner`, which need not be there, would lie in the folder or be the folder itself.
bool liesIn(const PathParts& inner, const PathText& folder) {
    std::optional<std::u16string> above = platform::canonicalPath(folder);
    std::optional<std::u16string> holder = platform::canonicalPath(inner.folder());
    if (!above || !holder) {
        return false;
    }
    const std::u16string end(1, kPathSeparator);
    return std::u16string(withoutEnd(*holder)).append(end).starts_with(std::u16string(withoutEnd(*above)).append(end));
}

// A copy over a link is written to what the link leads to, as one through the link would be.
FNPath writtenPlace(const FPath& target) {
    FNPath place(*NativeForm(target));
    std::int32_t ignored = 0;
    const auto status = platform::fileStatus(PathText(target), ignored);
    if (status && status->isLink) {
        if (const auto resolved = platform::canonicalPath(PathText(target))) {
            place.setNativePath(FStringRef(resolved->data(), static_cast<std::int32_t>(resolved->size())));
        }
    }
    return place;
}

// The content is complete, and where it replaces something on the disk, before it gets the name. The rights are those
// of the file `like`, which need not be open.
template <class Content>
bool writeToPlace(const FNPath& place, const platform::File& like, Content write) {
    std::int32_t error = 0;
    const PathParts parts(place);
    const platform::Folder folder = platform::Folder::open(parts.folder(), error);
    if (!folder.isOpen()) {
        return false;
    }
    std::u16string unfinished;
    platform::File target = folder.makeUnfinishedFile(like, unfinished, error);
    if (!target.isOpen()) {
        return false;
    }
    const bool replaces = platform::fileKindOf(PathText(place)) != platform::FileKind::missing;
    if (write(target, error) && (!replaces || target.flush(error)) && target.close(error) &&
        folder.replaceFile(unfinished, parts.name(), error)) {
        return true;
    }
    std::int32_t ignored = 0;
    target.close(ignored);
    folder.deleteFile(unfinished, ignored);
    return false;
}

bool copyNativeFile(const FPath& source, const FPath& target, IFileProgress* progress) {
    const PathText from(source);
    if (platform::isSameFile(from, PathText(target))) {
        return false;
    }
    std::int32_t error = 0;
    platform::File file = platform::File::open(from, openFlags(FileOpenMode::read | FileOpenMode::shareRead),
                                               platform::FileDisposition::openExisting, error);
    const PathParts parts(source);
    return file.isOpen() && writeToPlace(writtenPlace(target), file, [&](platform::File& copy, std::int32_t& reason) {
               return copyBytes(file, copy, parts.name(), progress, reason);
           });
}

// Without a size nobody could tell a copy that is complete.
bool copyOutOfArchive(FFileSystem& mount, const FPath& source, const FPath& target, IFileProgress* progress) {
    const auto clone = FRefPtr<CmObject>::adopt(source.clone());
    FPath& path = *cmCast<FPath>(clone.get());
    const FString name(path.getName());
    const std::int64_t size = mount.getFileSize(path);
    const auto stream = FRefPtr<FStream>::adopt(
        size < 0 ? nullptr : mount.openFile(path, FileOpenMode::read | FileOpenMode::shareRead, nullptr));
    return stream &&
           writeToPlace(writtenPlace(target), platform::File(), [&](platform::File& copy, std::int32_t& reason) {
               return copyBytes(*stream, size, copy, pathtext::viewOf(name), progress, reason);
           });
}

bool copyTree(platform::Folder& source, platform::Folder& parent, std::u16string_view name, IFileProgress* progress) {
    std::int32_t error = 0;
    const platform::Folder target = parent.makeFolder(name, error);
    if (!target.isOpen()) {
        return false;
    }
    if (copyFolderContent(source, target, progress, error)) {
        return true;
    }
    deleteTree(parent, name, error);
    return false;
}

std::optional<platform::VolumeInfo> volumeOf(const FPath& path) {
    const auto native = platform::toNativePath(PathText(path));
    return native ? platform::volumeInfo(*native) : std::nullopt;
}

struct KnownVolume {
    platform::VolumeKind native;
    VolumeKind kind;
    const char* name;
};

constexpr KnownVolume kVolumes[] = {
    {platform::VolumeKind::removable, VolumeKind::removable, "Removable Drive"},
    {platform::VolumeKind::fixed, VolumeKind::harddisk, "Harddisk"},
    {platform::VolumeKind::memory, VolumeKind::harddisk, "Harddisk"},
    {platform::VolumeKind::network, VolumeKind::network, "Network Drive"},
    {platform::VolumeKind::optical, VolumeKind::compactDisc, "Compact Disc"},
};

const KnownVolume* knownVolume(platform::VolumeKind native) {
    for (const KnownVolume& volume : kVolumes) {
        if (volume.native == native) {
            return &volume;
        }
    }
    return nullptr;
}

// Other names for a link. The entries themselves are asked for: a link to a folder, or to nowhere, has its name too.
class LinkNames final : public ICandidateChecker {
public:
    explicit LinkNames(const FNPath& link) : link_(link) { link.getExtension(extension_); }

    bool isValid(const FStringRef& candidate) override {
        return std::u16string_view(PathText(pathFor(candidate))).size() < kPathBufferLength;
    }
    bool isTaken(const FStringRef& candidate) override {
        std::int32_t ignored = 0;
        return platform::fileStatus(PathText(pathFor(candidate)), ignored).has_value();
    }

    FNPath pathFor(const FStringRef& candidate) const {
        FString name(candidate);
        name.append(".");
        name.append(extension_);
        FNPath path(link_);
        path.setName(name);
        return path;
    }

private:
    const FNPath& link_;
    FString extension_;
};

bool giveUnusedName(FNPath& link) {
    FString base;
    link.getBaseName(base, false);
    if (base.isEmpty()) {
        base = "file";
    }
    LinkNames names(link);
    FFastNamer namer;
    FString name;
    if (!namer.makeName(base, kLinkExtension, names, name)) {
        return false;
    }
    link.setName(names.pathFor(name).getName());
    return true;
}

// The path object goes along as a copy: the caller's may stand on the stack.
void addPath(FMessage& message, const char* key, const FPath& path) {
    const auto copy = FRefPtr<CmObject>::adopt(path.clone());
    message.setObject(key, static_cast<IUpdateTarget*>(copy.get()), false);
}

// The platform's function knows no object; there is one file system.
void passVolumeChange(platform::VolumeChange change, std::u16string_view root) {
    auto* files = cmCast<FNFileSystem>(fileSystemPointer.load(std::memory_order_acquire));
    if (files != nullptr) {
        files->tellVolumeChange(
            change == platform::VolumeChange::arrived,
            FNPath(FStringRef(root.data(), static_cast<std::int32_t>(root.size())), PathKind::folder));
    }
}

} // namespace

FNFileSystem::FNFileSystem() {
    FFileSystem* none = nullptr;
    fileSystemPointer.compare_exchange_strong(none, this, std::memory_order_acq_rel);
}

FNFileSystem::~FNFileSystem() {
    setVolumeMessages(false);
    FFileSystem* self = this;
    fileSystemPointer.compare_exchange_strong(self, nullptr, std::memory_order_acq_rel);
    FMessenger* messenger = FMessenger::getInstance();
    if (volumeGroup_ != 0 && messenger != nullptr) {
        messenger->removeGroup(volumeGroup_);
    }
}

FStream* FNFileSystem::createFile(FPath& path, std::uint32_t mode, std::int32_t* error) {
    if (isVirtualPath(path)) {
        return inArchive<FStream*>(path, nullptr,
                                   [&](FFileSystem& mount) { return mount.createFile(path, mode, error); });
    }
    if (FUrl* url = foreignUrl(path)) {
        UrlMetaHandler* handlers = UrlMetaHandler::getInstance();
        return handlers != nullptr ? handlers->createFile(*url, mode, error) : nullptr;
    }
    const PathText text(path);
    platform::FileOpenFlags flags = openFlags(mode);
    flags.write = true;
    std::int32_t reason = 0;
    platform::File file = platform::File::open(text, flags, platform::FileDisposition::createAlways, reason);
    if (!file.isOpen() && (mode & kMakesFolders) == kMakesFolders) {
        std::int32_t ignored = 0;
        if (platform::createFolders(PathParts(path).folder(), ignored)) {
            file = platform::File::open(text, flags, platform::FileDisposition::createAlways, reason);
        }
    }
    tell(error, file.isOpen() ? 0 : reason);
    return file.isOpen() ? streamOf(std::move(file), path, mode) : nullptr;
}

FStream* FNFileSystem::openFile(FPath& path, std::uint32_t mode, std::int32_t* error) {
    if (isVirtualPath(path)) {
        // What an archive gives can't be read around the system's buffers.
        const bool unbuffered = (mode & FileOpenMode::unbuffered) != 0;
        return unbuffered ? nullptr : inArchive<FStream*>(path, nullptr, [&](FFileSystem& mount) {
            return mount.openFile(path, mode, error);
        });
    }
    if (FUrl* url = foreignUrl(path)) {
        UrlMetaHandler* handlers = UrlMetaHandler::getInstance();
        return handlers != nullptr ? handlers->openFile(*url, mode, error) : nullptr;
    }
    std::int32_t reason = 0;
    platform::File file =
        platform::File::open(PathText(path), openFlags(mode), platform::FileDisposition::openExisting, reason);
    tell(error, file.isOpen() ? 0 : reason);
    if (!file.isOpen()) {
        return nullptr;
    }
    adoptStoredName(path);
    return streamOf(std::move(file), path, mode);
}

void FNFileSystem::closeStream(FStream* stream) {
    if (stream == nullptr) {
        return;
    }
    if (auto* file = cmCast<FFileStream>(stream)) {
        file->close();
        if (file->tellsChanges()) {
            notifyChange(FileChangeKind::written, file->getPath(), nullptr);
        }
    }
    stream->release();
}

bool FNFileSystem::deleteFile(const FPath& path) {
    if (isVirtualPath(path)) {
        return inArchive(path, false, [&](FFileSystem& mount) { return mount.deleteFile(path); });
    }
    std::int32_t error = 0;
    if (!platform::deleteFile(PathText(path), error)) {
        return false;
    }
    notifyChange(FileChangeKind::deleted, path, nullptr);
    return true;
}

bool FNFileSystem::fileExists(const FPath& path) {
    if (isVirtualPath(path)) {
        return inArchive(path, false, [&](FFileSystem& mount) { return mount.fileExists(path); });
    }
    return platform::fileKindOf(PathText(path)) == platform::FileKind::file;
}

bool FNFileSystem::rename(FPath& path, const FStringRef& newName) {
    if (isVirtualPath(path)) {
        return inArchive(path, false, [&](FFileSystem& mount) { return mount.rename(path, newName); });
    }
    if (FUrl* url = cmCast<FUrl>(&path)) {
        const auto meant = FRefPtr<FNPath>::adopt(url->toNativePath());
        if (!meant || !rename(*meant, newName)) {
            return false;
        }
        url->setFromNativePath(*meant);
        return true;
    }
    FNPath* native = cmCast<FNPath>(&path);
    if (native == nullptr || newName.isEmpty()) {
        return false;
    }
    FNPath target(*native);
    if (isAbsolutePath(newName)) {
        target.setNativePath(newName);
        if (isVirtualPath(target)) {
            return false;
        }
    } else {
        target.setName(newName);
    }
    return moveTo(*native, target);
}

bool FNFileSystem::move(FPath& path, const FPath& target) {
    if (isVirtualPath(path)) {
        // The mount knows what lies in it.
        const std::u16string place = virtualTextOf(target);
        return isVirtualPath(target) && rename(path, FStringRef(place.data(), static_cast<std::int32_t>(place.size())));
    }
    if (isVirtualPath(target)) {
        return false;
    }
    if (FUrl* url = cmCast<FUrl>(&path)) {
        const auto meant = FRefPtr<FNPath>::adopt(url->toNativePath());
        if (!meant || !move(*meant, target)) {
            return false;
        }
        url->setFromNativePath(*meant);
        return true;
    }
    FNPath* native = cmCast<FNPath>(&path);
    const NativeForm nativeTarget(target);
    if (native == nullptr || !nativeTarget) {
        return false;
    }
    FNPath place(*native);
    place.setPath(nativeTarget->getPath());
    place.setName(nativeTarget->getName());
    return moveTo(*native, place);
}

bool FNFileSystem::moveTo(FNPath& path, const FNPath& target) {
    std::int32_t error = 0;
    // A name that stays as it is isn't taken by somebody else.
    const bool stays = FPath::comparePaths(&path, &target, true) == 0;
    if (stays ? platform::fileKindOf(PathText(path)) == platform::FileKind::missing
              : !platform::moveEntry(PathText(path), PathText(target), error)) {
        return false;
    }
    const FNPath old(path);
    path = target;
    notifyChange(FileChangeKind::renamed, path, &old);
    return true;
}

bool FNFileSystem::copyFile(const FPath& source, const FPath& target, IFileProgress* progress) {
    if (isVirtualPath(target) || !NativeForm(target)) {
        return false;
    }
    const bool copied =
        isVirtualPath(source)
            ? inArchive(source, false,
                        [&](FFileSystem& mount) { return copyOutOfArchive(mount, source, target, progress); })
            : copyNativeFile(source, target, progress);
    if (!copied) {
        return false;
    }
    notifyChange(FileChangeKind::written, target, nullptr);
    return true;
}

bool FNFileSystem::createFolder(const FPath& path) {
    if (isVirtualPath(path)) {
        return inArchive(path, false, [&](FFileSystem& mount) { return mount.createFolder(path); });
    }
    std::int32_t error = 0;
    return platform::createFolders(PathText(path), error);
}

bool FNFileSystem::getVolumeName(const FPath& path, FString& out) {
    const auto volume = volumeOf(path);
    const KnownVolume* known = volume ? knownVolume(volume->kind) : nullptr;
    if (known == nullptr) {
        return false;
    }
    if (volume->label.empty()) {
        out = known->name;
        return true;
    }
    out.assignUtf8(volume->label.c_str());
    foldLabel(out);
    return true;
}

bool FNFileSystem::deleteFolderContent(const FPath& path, bool recursive) {
    if (isVirtualPath(path)) {
        return false;
    }
    std::int32_t error = 0;
    platform::Folder folder = platform::Folder::open(PathText(path), error);
    return folder.isOpen() && emptyFolder(folder, recursive ? FolderDepth::wholeTree : FolderDepth::thisFolder, error);
}

bool FNFileSystem::getFileTimes(const FPath& path, std::int64_t& created, std::int64_t& modified) {
    if (isVirtualPath(path)) {
        return inArchive(path, false, [&](FFileSystem& mount) { return mount.getFileTimes(path, created, modified); });
    }
    std::int32_t error = 0;
    const auto status = platform::fileStatus(PathText(path), error);
    if (!status) {
        return false;
    }
    created = status->created;
    modified = status->modified;
    return true;
}

std::int64_t FNFileSystem::getFileSize(const FPath& path) {
    if (isVirtualPath(path)) {
        return inArchive(path, std::int64_t(-1), [&](FFileSystem& mount) { return mount.getFileSize(path); });
    }
    std::int32_t error = 0;
    const auto status = platform::fileStatus(PathText(path), error);
    return status ? status->size : -1;
}

bool FNFileSystem::sanitizeName(FString& text, char16_t replacement, bool strip) {
    return cleanName(text, replacement, strip ? ControlCharacters::drop : ControlCharacters::keep);
}

FFileIterator* FNFileSystem::newIterator(const FPath& folder, bool resolveLinks) {
    if (isVirtualPath(folder)) {
        FArchiveManager* archives = FArchiveManager::getInstance();
        return archives != nullptr ? archives->newIterator(folder) : nullptr;
    }
    if (const FUrl* url = foreignUrl(folder)) {
        UrlMetaHandler* handlers = UrlMetaHandler::getInstance();
        return handlers != nullptr ? handlers->newIterator(*url, resolveLinks) : nullptr;
    }
    const NativeForm native(folder);
    return native ? new FNFileIterator(*native, resolveLinks, false) : nullptr;
}

std::int64_t FNFileSystem::countFiles(const FPath& folder, bool folders, bool recursive, std::int64_t* size) {
    if (isVirtualPath(folder)) {
        return inArchive(folder, std::int64_t(0),
                         [&](FFileSystem& mount) { return mount.countFiles(folder, folders, recursive, size); });
    }
    std::int32_t error = 0;
    platform::Folder open = platform::Folder::open(PathText(folder), error);
    FolderCount count;
    countFolder(open, recursive ? FolderDepth::wholeTree : FolderDepth::thisFolder, count);
    if (size != nullptr) {
        *size += count.bytes;
    }
    return count.files + (folders ? count.folders : 0);
}

bool FNFileSystem::copyFolder(const FPath& source, const FPath& target, IFileProgress* progress) {
    if (isVirtualPath(source) || isVirtualPath(target)) {
        return false;
    }
    std::int32_t error = 0;
    const PathText from(source);
    const PathParts place(target);
    // A copy into itself would never come to an end.
    if (liesIn(place, from)) {
        return false;
    }
    platform::Folder folder = platform::Folder::open(from, error);
    platform::Folder parent = platform::Folder::open(place.folder(), error);
    if (!folder.isOpen() || !parent.isOpen() || !copyTree(folder, parent, place.name(), progress)) {
        return false;
    }
    notifyChange(FileChangeKind::written, target, nullptr);
    return true;
}

bool FNFileSystem::deleteFolder(const FPath& path) {
    if (isVirtualPath(path)) {
        return inArchive(path, false, [&](FFileSystem& mount) { return mount.deleteFolder(path); });
    }
    std::int32_t error = 0;
    const PathText text(path);
    const auto status = platform::fileStatus(text, error);
    if (!status || !status->isFolder) {
        return false;
    }
    if (status->isLink) {
        return deleteFile(path);
    }
    const PathParts parts(path);
    platform::Folder parent = platform::Folder::open(parts.folder(), error);
    if (!parent.isOpen() || !deleteTree(parent, parts.name(), error)) {
        return false;
    }
    notifyChange(FileChangeKind::deleted, path, nullptr);
    return true;
}

bool FNFileSystem::folderExists(const FPath& path) {
    if (isVirtualPath(path)) {
        return inArchive(path, false, [&](FFileSystem& mount) { return mount.folderExists(path); });
    }
    return platform::fileKindOf(PathText(path)) == platform::FileKind::folder;
}

bool FNFileSystem::openUrl(const FStringRef& url) {
    FString narrow(url);
    return narrow.toMultiByte(CodePage::utf8) && platform::openAddress(narrow.text8());
}

bool FNFileSystem::isAbsolute(const FPath& path) {
    FString text;
    path.getFullPath(text);
    return isAbsolutePath(text);
}

bool FNFileSystem::isRootPath(const FStringRef& text) {
    return tessera::isRootPath(text);
}

void FNFileSystem::notifyChange(FileChangeKind kind, const FPath& path, const FPath* other) {
    FMessenger* messenger = FMessenger::getInstance();
    if (messenger == nullptr) {
        return;
    }
    const auto message = FRefPtr<FMessage>::adopt(new FMessage("PathChanged"));
    addPath(*message, "change", path);
    message->setInt("kind", static_cast<std::int64_t>(kind));
    if (other != nullptr) {
        addPath(*message, "other", *other);
    }
    messenger->sendTo(FileChangeHub::name, message.get(), FMessenger::HookUse::call);
}

bool FNFileSystem::sanitizePath(FString& text, char16_t replacement) {
    return cleanPath(text, replacement);
}

bool FNFileSystem::formatSize(const FPath& path, FString& text, std::int32_t maxLevel) {
    return formatByteCount(getFileSize(path), text, maxLevel);
}

bool FNFileSystem::revealInShell(const FPath& path) {
    return platform::showInFolder(PathText(path));
}

bool FNFileSystem::openDocument(const FPath& path) {
    return platform::openDocument(PathText(path));
}

bool FNFileSystem::resolveLink(FPath& path) {
    const PathText text(path);
    const auto target = platform::hasLinkExtension(text) ? platform::readLink(text) : std::nullopt;
    if (!target) {
        return false;
    }
    path.set(FStringRef(target->data(), static_cast<std::int32_t>(target->size())), PathKind::unknown);
    path.setFileType(FFileType());
    return true;
}

bool FNFileSystem::createLink(FPath& path, const FPath& target) {
    FNPath* native = cmCast<FNPath>(&path);
    if (native == nullptr) {
        return false;
    }
    FNPath link(*native);
    link.setFileType(FFileType());
    if (!platform::hasLinkExtension(PathParts(link).name())) {
        FString name(link.getName());
        name.append(kLinkExtension);
        link.setName(name);
    }
    std::int32_t error = 0;
    const bool isTaken = platform::fileStatus(PathText(link), error).has_value();
    if ((isTaken && !giveUnusedName(link)) || !platform::createLink(PathText(link), PathText(target), error)) {
        return false;
    }
    link.setKind(PathKind::unknown);
    *native = link;
    return true;
}

VolumeKind FNFileSystem::getVolumeKind(const FPath& path) {
    const auto volume = volumeOf(path);
    if (!volume) {
        return VolumeKind::none;
    }
    const KnownVolume* known = knownVolume(volume->kind);
    return known != nullptr ? known->kind : VolumeKind::unknown;
}

bool FNFileSystem::getDiskNumber(const FPath& path, FString& out) {
    const auto volume = volumeOf(path);
    if (!volume || volume->diskNumber < 0) {
        return false;
    }
    out.printf("%d", volume->diskNumber);
    return true;
}

std::int64_t FNFileSystem::getFreeSpace(const FPath& path) {
    const auto volume = volumeOf(path);
    return volume ? static_cast<std::int64_t>(volume->availableBytes) : -1;
}

bool FNFileSystem::isSameFile(const FPath& a, const FPath& b) {
    return platform::isSameFile(PathText(a), PathText(b));
}

bool FNFileSystem::setVolumeMessages(bool wanted) {
    if (wanted) {
        return platform::startVolumeWatch(passVolumeChange);
    }
    platform::stopVolumeWatch();
    return true;
}

void FNFileSystem::addVolumeListener(IBaseUnknown* listener) {
    FMessenger* messenger = FMessenger::getInstance();
    if (messenger == nullptr || listener == nullptr) {
        return;
    }
    if (volumeGroup_ == 0) {
        volumeGroup_ = messenger->createGroup();
    }
    messenger->addToGroup(volumeGroup_, listener);
}

void FNFileSystem::removeVolumeListener(IBaseUnknown* listener) {
    FMessenger* messenger = FMessenger::getInstance();
    if (messenger != nullptr && volumeGroup_ != 0) {
        messenger->removeFromGroup(volumeGroup_, listener);
    }
}

void FNFileSystem::tellVolumeChange(bool arrived, const FPath& root) {
    FMessenger* messenger = FMessenger::getInstance();
    if (messenger == nullptr || volumeGroup_ == 0) {
        return;
    }
    const auto message = FRefPtr<FMessage>::adopt(new FMessage(arrived ? "VolMount" : "VolUnmount"));
    addPath(*message, "kRootPath", root);
    messenger->sendToGroup(volumeGroup_, message.get());
}

} // namespace tessera
