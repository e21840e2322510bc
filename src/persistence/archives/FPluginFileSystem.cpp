#include "persistence/archives/FPluginFileSystem.h"

#include "persistence/archives/FPluginFileIterator.h"
#include "persistence/archives/VirtualPath.h"
#include "persistence/paths/PathText.h"
#include "persistence/streams/FIBStream.h"
#include "persistence/streams/FPluginStreamProxy.h"
#include "persistence/streams/FileOpenMode.h"

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

} // namespace

// One stream that was handed out: counts itself for as long as it lives.
class FPluginFileSystem::CountedStream final : public FImplements<FObject, IHostStream> {
public:
    CountedStream(FPluginFileSystem& mount, IHostStream& stream) : mount_(&mount), stream_(&stream) {
        ++mount_->openCount_;
    }
    ~CountedStream() override { --mount_->openCount_; }

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
    FRefPtr<IHostStream> stream_;
};

FPluginFileSystem::FPluginFileSystem(IVirtualVolume& volume, IVirtualFileSystem& component, FStream* stream,
                                     Access access)
    : volume_(&volume), component_(&component), stream_(stream) {
    for (const NamedCapability& capability : kCapabilities) {
        if (component.isSupported(capability.key) == kResultOk) {
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
    volume_.reset();
    component_.reset();
    stream_.reset();
}

FStream* FPluginFileSystem::handOut(IHostStream* stream) {
    const auto given = FRefPtr<IHostStream>::adopt(stream);
    const auto counted = FRefPtr<CountedStream>::adopt(new CountedStream(*this, *given));
    const auto proxy = FRefPtr<FPluginStreamProxy>::adopt(new FPluginStreamProxy(*counted, capabilities_));
    return new FIBStream(proxy.get());
}

FStream* FPluginFileSystem::createFile(FPath& path, std::uint32_t mode, std::int32_t*) {
    IHostStream* stream = nullptr;
    const bool created =
        can(canWrite) && volume_->createFile(innerOf(path).c_str(), mode, &stream) == kResultOk && stream != nullptr;
    return created ? handOut(stream) : nullptr;
}

FStream* FPluginFileSystem::openFile(FPath& path, std::uint32_t, std::int32_t*) {
    IHostStream* stream = nullptr;
    const bool opened =
        can(canRead) && volume_->openFile(innerOf(path).c_str(), kInnerMode, &stream) == kResultOk && stream != nullptr;
    return opened ? handOut(stream) : nullptr;
}

void FPluginFileSystem::closeStream(FStream* stream) {
    if (stream != nullptr) {
        stream->release();
    }
}

bool FPluginFileSystem::change(const FPath& path, FResult (IVirtualVolume::*operation)(const char16_t*)) {
    return can(canWrite) && (volume_.get()->*operation)(innerOf(path).c_str()) == kResultOk;
}

bool FPluginFileSystem::deleteFile(const FPath& path) {
    return change(path, &IVirtualVolume::deleteFile);
}

bool FPluginFileSystem::fileExists(const FPath& path) {
    if (!can(canRead)) {
        return false;
    }
    std::int16_t kind = static_cast<std::int16_t>(PathKind::file);
    const FResult result = volume_->exists(innerOf(path).c_str(), &kind, nullptr);
    return result == kResultNotProvided || (result == kResultOk && kind != static_cast<std::int16_t>(PathKind::folder));
}

bool FPluginFileSystem::rename(FPath& path, const FStringRef& newName) {
    if (!can(canWrite) || newName.isEmpty()) {
        return false;
    }
    const auto target = FRefPtr<CmObject>::adopt(path.clone());
    FPath& renamed = *cmCast<FPath>(target.get());
    if (isVirtualText(pathtext::wideText(newName))) {
        renamed.set(newName, path.getKind());
    } else {
        renamed.setName(newName);
    }
    if (volume_->rename(innerOf(path).c_str(), innerOf(renamed).c_str()) != kResultOk) {
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
    if (!can(canRead) || volume_->exists(innerOf(path).c_str(), nullptr, &time) != kResultOk) {
        return false;
    }
    created = time;
    modified = time;
    return true;
}

std::int64_t FPluginFileSystem::getFileSize(const FPath& path) {
    std::int64_t size = 0;
    return can(canRead) && volume_->getSize(innerOf(path).c_str(), &size) == kResultOk ? size : -1;
}

FFileIterator* FPluginFileSystem::newIterator(const FPath& folder, bool) {
    if (!can(canIterate)) {
        return nullptr;
    }
    IVirtualIterator* entries = volume_->iterate(false, innerOf(folder).c_str());
    return entries != nullptr ? new FPluginFileIterator(folder, FRefPtr<IVirtualIterator>::adopt(entries)) : nullptr;
}

std::int64_t FPluginFileSystem::countFiles(const FPath& folder, bool folders, bool recursive, std::int64_t* size) {
    if (!can(canIterate)) {
        return -1;
    }
    const auto entries = FRefPtr<IVirtualIterator>::adopt(volume_->iterate(recursive, innerOf(folder).c_str()));
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
    return can(canRead) && volume_->exists(innerOf(path).c_str(), &kind, nullptr) == kResultOk &&
           kind == static_cast<std::int16_t>(PathKind::folder);
}

} // namespace tessera
