#include "persistence/archives/FPluginFileSystem.h"

#include "persistence/archives/FArchiveManager.h"
#include "persistence/archives/FPluginFileIterator.h"
#include "persistence/archives/VirtualPath.h"
#include "persistence/paths/PathRules.h"
#include "persistence/paths/PathText.h"
#include "persistence/streams/FIBStream.h"
#include "persistence/streams/FPluginStreamProxy.h"
#include "persistence/streams/FileOpenMode.h"

#include <string>
#include <utility>

namespace tessera {

namespace {

constexpr std::uint32_t kInnerMode = FileOpenMode::read | FileOpenMode::shareRead;

struct NamedCapability {
    const char* key;
    std::uint32_t bit;
};

constexpr NamedCapability kCapabilities[] = {
    {"CanRead", FPluginFileSystem::canRead},
    {"CanWrite", FPluginFileSystem::canWrite},
    {"CanIterate", FPluginFileSystem::canIterate},
};

std::u16string innerOf(const FPath& path) {
    return innerPath(virtualTextOf(path));
}

// As the table of mounts has it: in upper case. Empty for a path without one.
FString mountKeyOf(const FPath& path) {
    FString key;
    FArchiveManager::getArchiveKey(path, key);
    key.toUpper();
    return key;
}

// A name alone, that leads into no other folder.
bool isPlainName(const FStringRef& text) {
    const std::u16string name = pathtext::wideText(text);
    return !name.empty() && name != u"." && name != u".." && name.find_first_of(u"\\/") == name.npos &&
           !isAbsolutePath(text);
}

} // namespace

// One stream that was handed out: counts itself for as long as it lives.
class FPluginFileSystem::CountedStream final : public FImplements<FObject, IHostStream> {
public:
    CountedStream(FPluginFileSystem& mount, IHostStream& stream)
        : mount_(&mount), archive_(mount.archive_), stream_(&stream) {
        ++mount_->openCount_;
    }
    // Counts until the component's stream has gone as well: another thread may close what isn't in use.
    ~CountedStream() override {
        stream_.reset();
        --mount_->openCount_;
    }

    FResult read(void* buffer, std::int32_t size, std::int32_t* count) override {
        return stream_->read(buffer, size, count);
    }
    FResult write(const void* buffer, std::int32_t size, std::int32_t* count) override {
        return stream_->write(buffer, size, count);
    }
    FResult seek(std::int64_t offset, std::int32_t mode, std::int64_t* position) override {
        return stream_->seek(offset, mode, position);
    }
    FResult tell(std::int64_t* position) override { return stream_->tell(position); }

private:
    FRefPtr<FPluginFileSystem> mount_;
    FRefPtr<OpenedArchive> archive_;
    FRefPtr<IHostStream> stream_;
};

FPluginFileSystem::FPluginFileSystem(IVirtualVolume& volume, ArchiveComponent& component, FStream* stream,
                                     Access access)
    : archive_(FRefPtr<OpenedArchive>::adopt(new OpenedArchive(volume, component, stream))) {
    for (const NamedCapability& capability : kCapabilities) {
        if (component->isSupported(capability.key) == kResultOk) {
            capabilities_ |= capability.bit;
        }
    }
    if (access == Access::readOnly) {
        capabilities_ &= ~std::uint32_t(canWrite);
    }
}

FPluginFileSystem::~FPluginFileSystem() {
    FPluginFileSystem::close();
}

void FPluginFileSystem::close() {
    archive_.reset();
}

FStream* FPluginFileSystem::handOut(IHostStream* stream) {
    const auto given = FRefPtr<IHostStream>::adopt(stream);
    const auto counted = FRefPtr<CountedStream>::adopt(new CountedStream(*this, *given));
    const auto proxy = FRefPtr<FPluginStreamProxy>::adopt(new FPluginStreamProxy(*counted, capabilities_));
    return new FIBStream(proxy.get());
}

FStream* FPluginFileSystem::createFile(FPath& path, std::uint32_t mode, std::int32_t*) {
    IHostStream* stream = nullptr;
    const bool created = can(canWrite) &&
                         archive_->volume().createFile(innerOf(path).c_str(), mode, &stream) == kResultOk &&
                         stream != nullptr;
    return created ? handOut(stream) : nullptr;
}

FStream* FPluginFileSystem::openFile(FPath& path, std::uint32_t, std::int32_t*) {
    IHostStream* stream = nullptr;
    const bool opened = can(canRead) &&
                        archive_->volume().openFile(innerOf(path).c_str(), kInnerMode, &stream) == kResultOk &&
                        stream != nullptr;
    return opened ? handOut(stream) : nullptr;
}

void FPluginFileSystem::closeStream(FStream* stream) {
    if (stream != nullptr) {
        stream->release();
    }
}

bool FPluginFileSystem::change(const FPath& path, FResult (IVirtualVolume::*operation)(const char16_t*)) {
    return can(canWrite) && (archive_->volume().*operation)(innerOf(path).c_str()) == kResultOk;
}

bool FPluginFileSystem::deleteFile(const FPath& path) {
    return change(path, &IVirtualVolume::deleteFile);
}

bool FPluginFileSystem::fileExists(const FPath& path) {
    if (!can(canRead)) {
        return false;
    }
    std::int16_t kind = static_cast<std::int16_t>(PathKind::file);
    const FResult result = archive_->volume().exists(innerOf(path).c_str(), &kind, nullptr);
    return result == kResultNotProvided || (result == kResultOk && kind != static_cast<std::int16_t>(PathKind::folder));
}

bool FPluginFileSystem::rename(FPath& path, const FStringRef& newName) {
    if (!can(canWrite)) {
        return false;
    }
    const auto target = FRefPtr<CmObject>::adopt(path.clone());
    FPath& renamed = *cmCast<FPath>(target.get());
    if (isVirtualText(pathtext::wideText(newName))) {
        renamed.set(newName, path.getKind());
        if (!(mountKeyOf(renamed) == mountKeyOf(path)) || innerOf(renamed).empty()) {
            return false;
        }
    } else if (isPlainName(newName)) {
        renamed.setName(newName);
    } else {
        return false;
    }
    if (archive_->volume().rename(innerOf(path).c_str(), innerOf(renamed).c_str()) != kResultOk) {
        return false;
    }
    FString whole;
    renamed.getFullPath(whole);
    path.set(whole, path.getKind());
    return true;
}

bool FPluginFileSystem::createFolder(const FPath& path) {
    return change(path, &IVirtualVolume::createFolder);
}

// Archives keep one time.
bool FPluginFileSystem::getFileTimes(const FPath& path, std::int64_t& created, std::int64_t& modified) {
    std::int64_t time = 0;
    if (!can(canRead) || archive_->volume().exists(innerOf(path).c_str(), nullptr, &time) != kResultOk) {
        return false;
    }
    created = time;
    modified = time;
    return true;
}

std::int64_t FPluginFileSystem::getFileSize(const FPath& path) {
    std::int64_t size = 0;
    return can(canRead) && archive_->volume().getSize(innerOf(path).c_str(), &size) == kResultOk ? size : -1;
}

FFileIterator* FPluginFileSystem::newIterator(const FPath& folder, bool) {
    if (!can(canIterate)) {
        return nullptr;
    }
    IVirtualIterator* entries = archive_->volume().iterate(false, innerOf(folder).c_str());
    return entries != nullptr ? new FPluginFileIterator(folder, *archive_, FRefPtr<IVirtualIterator>::adopt(entries))
                              : nullptr;
}

std::int64_t FPluginFileSystem::countFiles(const FPath& folder, bool folders, bool recursive, std::int64_t* size) {
    if (!can(canIterate)) {
        return -1;
    }
    const auto entries =
        FRefPtr<IVirtualIterator>::adopt(archive_->volume().iterate(recursive, innerOf(folder).c_str()));
    std::int64_t count = 0;
    VirtualEntry entry{};
    while (entries && entries->next(&entry) == kResultOk) {
        const bool isFolder = entry.kind == static_cast<std::int16_t>(PathKind::folder);
        count += !isFolder || folders ? 1 : 0;
        if (size != nullptr && !isFolder) {
            *size += entry.size;
        }
    }
    return count;
}

bool FPluginFileSystem::deleteFolder(const FPath& path) {
    return change(path, &IVirtualVolume::deleteFolder);
}

bool FPluginFileSystem::folderExists(const FPath& path) {
    std::int16_t kind = static_cast<std::int16_t>(PathKind::file);
    return can(canRead) && archive_->volume().exists(innerOf(path).c_str(), &kind, nullptr) == kResultOk &&
           kind == static_cast<std::int16_t>(PathKind::folder);
}

} // namespace tessera
