#include "persistence/archives/FArchiveManager.h"

#include "foundation/containers/CmIterator.h"
#include "foundation/object/FSingletonList.h"
#include "foundation/threads/FLockGuard.h"
#include "persistence/archives/ArchiveComponent.h"
#include "persistence/archives/ArchiveEntry.h"
#include "persistence/archives/FFileIteratorUrlWrapper.h"
#include "persistence/archives/FPluginFileSystem.h"
#include "persistence/archives/VirtualPath.h"
#include "persistence/paths/FNPath.h"
#include "persistence/paths/PathText.h"
#include "persistence/streams/FileOpenMode.h"

#include <atomic>
#include <string>

namespace tessera {

namespace {

// Each level of archives within archives takes its share of the stack while it is mounted.
constexpr int kDeepest = 16;
constexpr std::uint32_t kReadMode = FileOpenMode::read | FileOpenMode::shareRead;
constexpr std::uint32_t kWriteMode = kReadMode | FileOpenMode::write | FileOpenMode::shareWrite;
static_assert(kReadMode == 5 && kWriteMode == 15);

constinit FSingleton<FArchiveManager> instance([] { return new FArchiveManager; });
constinit std::atomic<IBaseUnknown*> hostContext{nullptr};

bool isTooDeep(std::u16string key) {
    int levels = 1;
    while (levels <= kDeepest && isVirtualText(key)) {
        key = archiveKey(key).value_or(std::u16string());
        ++levels;
    }
    return levels > kDeepest;
}

} // namespace

FArchiveManager* FArchiveManager::getInstance() {
    return instance.get(true);
}

void FArchiveManager::setHostContext(IBaseUnknown* context) {
    hostContext.store(context, std::memory_order_release);
}

FArchiveManager::FArchiveManager() {
    table_.setOwnership(CmOwnership::shared);
}

FArchiveManager::~FArchiveManager() = default;

FFileSystem* FArchiveManager::getFileSystem(const FPath& path) {
    const FLockGuard guard(lock_);
    FString key;
    FString scheme;
    if (!getArchiveKey(path, key)) {
        return nullptr;
    }
    if (const ArchiveEntry* entry = find(key)) {
        return entry->getFileSystem();
    }
    getScheme(path, scheme);
    const bool mounts = pathtext::viewOf(scheme) == kArchiveScheme && !isTooDeep(pathtext::wideText(key));
    return mounts ? mount(scheme, key) : nullptr;
}

FFileSystem* FArchiveManager::mount(const FString& scheme, const FString& key) {
    FNPath archive(key, PathKind::file);
    // Each of the steps below would try anew to mount what holds the archive.
    if (isVirtualPath(archive) && getFileSystem(archive) == nullptr) {
        return nullptr;
    }
    const FRefPtr<ArchiveComponent> component = ArchiveComponent::forType(archive.getFileType());
    FFileSystem* files = FFileSystem::getInstance();
    if (!component || files == nullptr ||
        (*component)->initialize(hostContext.load(std::memory_order_acquire)) != kResultOk) {
        return nullptr;
    }
    auto access = FPluginFileSystem::Access::asTheComponentCan;
    const bool writes = (*component)->isSupported("CanWrite") == kResultOk;
    auto stream = FRefPtr<FStream>::adopt(files->openFile(archive, writes ? kWriteMode : kReadMode, nullptr));
    if (!stream && writes) {
        access = FPluginFileSystem::Access::readOnly;
        stream = FRefPtr<FStream>::adopt(files->openFile(archive, kReadMode, nullptr));
    }
    if (!stream) {
        return nullptr;
    }
    const auto volume = FRefPtr<IVirtualVolume>::adopt((*component)->openVolume(&stream->hostView()));
    if (!volume) {
        return nullptr;
    }
    const auto mounted =
        FRefPtr<FPluginFileSystem>::adopt(new FPluginFileSystem(*volume, *component, stream.get(), access));
    // A component may have asked for the archive itself while it opened it: the first mount stays.
    if (const ArchiveEntry* entry = find(key)) {
        return entry->getFileSystem();
    }
    return addArchive(mounted.get(), scheme, key) ? mounted.get() : nullptr;
}

bool FArchiveManager::addArchive(FFileSystem* fileSystem, const FStringRef& scheme, const FStringRef& key) {
    if (fileSystem == nullptr || scheme.isEmpty() || key.isEmpty()) {
        return false;
    }
    const FLockGuard guard(lock_);
    const auto entry = FRefPtr<ArchiveEntry>::adopt(new ArchiveEntry(scheme, key, fileSystem));
    if (auto* present = cmCast<ArchiveEntry>(table_.find(entry.get()))) {
        present->setMountCount(present->getMountCount() + 1);
        return true;
    }
    return table_.add(entry.get());
}

bool FArchiveManager::removeArchive(const FStringRef& scheme, const FStringRef& key, std::int32_t force) {
    const FLockGuard guard(lock_);
    ArchiveEntry* entry = table_.getCount() == 0 ? nullptr : find(key);
    if (entry == nullptr || !(entry->getScheme() == scheme)) {
        return false;
    }
    if (entry->getMountCount() >= 2 && force != kForced) {
        entry->setMountCount(entry->getMountCount() - 1);
        return false;
    }
    return table_.remove(entry);
}

void FArchiveManager::removeUnusedRemovables() {
    const FLockGuard guard(lock_);
    for (std::int32_t i = 0; i < table_.getCount();) {
        auto* entry = cmCast<ArchiveEntry>(table_.at(i));
        auto* mounted = entry != nullptr ? cmCast<FRemovableFileSystem>(entry->getFileSystem()) : nullptr;
        if (mounted == nullptr || entry->getMountCount() > 1 || mounted->getOpenCount() > 0) {
            ++i;
            continue;
        }
        // Closing and releasing may run a component's code, and that may change the table: begin again.
        mounted->close();
        table_.remove(entry);
        i = 0;
    }
}

FFileIterator* FArchiveManager::newIterator(const FPath& path) {
    const FLockGuard guard(lock_);
    FFileSystem* mounted = getFileSystem(path);
    FFileIterator* entries = mounted != nullptr ? mounted->newIterator(path, false) : nullptr;
    const std::u16string text = virtualTextOf(path);
    if (entries == nullptr || virtualScheme(text) == kArchiveScheme) {
        return entries;
    }
    return new FFileIteratorUrlWrapper(pathtext::stringOf(text), entries);
}

bool FArchiveManager::getScheme(const FPath& path, FString& out) {
    const auto scheme = virtualScheme(virtualTextOf(path));
    if (scheme) {
        out = pathtext::stringOf(*scheme);
    }
    return scheme.has_value();
}

bool FArchiveManager::getArchiveKey(const FPath& path, FString& out) {
    const auto key = archiveKey(virtualTextOf(path));
    if (key) {
        out = pathtext::stringOf(*key);
    }
    return key.has_value();
}

FString FArchiveManager::getInnerPath(const FPath& path) {
    return pathtext::stringOf(innerPath(virtualTextOf(path)));
}

std::int32_t FArchiveManager::getMountCount(const FStringRef& key) {
    const FLockGuard guard(lock_);
    const ArchiveEntry* entry = find(key);
    return entry != nullptr ? entry->getMountCount() : 0;
}

// As given, then in upper case, then in lower case.
ArchiveEntry* FArchiveManager::find(const FStringRef& key) const {
    FString spelled(key);
    FString upper(key);
    upper.toUpper();
    FString lower(key);
    lower.toLower();
    ArchiveEntry probe(FStringRef(), FStringRef(), nullptr);
    for (const FString* each : {&spelled, &upper, &lower}) {
        probe.setKeyAsGiven(*each);
        if (auto* entry = cmCast<ArchiveEntry>(table_.find(&probe))) {
            return entry;
        }
    }
    return nullptr;
}

} // namespace tessera
