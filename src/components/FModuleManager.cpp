#include "components/FModuleManager.h"

#include "appservices/defaults/FDefaults.h"
#include "appservices/defaults/FGlobalDefaultPool.h"
#include "appservices/formatting/CmDate.h"
#include "appservices/formatting/CmTime.h"
#include "persistence/files/FFileIterator.h"
#include "persistence/files/FFileSystem.h"
#include "persistence/paths/FNPath.h"
#include "platform/KnownFolders.h"
#include "platform/RegistryValues.h"

#include <optional>
#include <string>

namespace tessera {
namespace {

constexpr char kLastModified[] = "LastModified";
// No file has it: a module whose file doesn't tell its time is never taken from what is remembered.
constexpr std::int64_t kUnknownTime = -1;

constexpr std::u16string_view kSharedKey = u"Software\\Marlgrove\\Shared Components";
constexpr std::u16string_view kSharedName = u"Path";
constexpr std::u16string_view kSharedFolder = u"\\Marlgrove\\Shared Components";
constexpr std::u16string_view kSystemKey = u"Software\\Microsoft\\Windows\\CurrentVersion";
constexpr std::u16string_view kSystemName = u"ProgramFilesDir";

std::int64_t modificationTime(const FPath& path) {
    FFileSystem* files = FFileSystem::getInstance();
    std::int64_t created = 0;
    std::int64_t modified = 0;
    if (files == nullptr || !files->getFileTimes(path, created, modified)) {
        return kUnknownTime;
    }
    CmDate date;
    CmTime time;
    date.setFromUnixTime(modified);
    time.setFromUnixTime(modified);
    return date.getSeconds(time);
}

std::optional<std::u16string> defaultSharedFolder() {
    auto folder = platform::knownFolder(platform::KnownFolder::commonFiles);
    if (!folder) {
        folder = platform::readRegistryValue(kSystemKey, kSystemName);
    }
    if (folder) {
        folder->append(kSharedFolder);
    }
    return folder;
}

// Modules that are loaded to be asked go again at once.
class ScanUnloading {
public:
    ScanUnloading() { FModuleBase::setDeferredUnloading(false); }
    ~ScanUnloading() { FModuleBase::setDeferredUnloading(true); }
    ScanUnloading(const ScanUnloading&) = delete;
    ScanUnloading& operator=(const ScanUnloading&) = delete;
};

} // namespace

FModuleManager::~FModuleManager() = default;

const FFileType& FModuleManager::getFileType() {
    static const FFileType type("Module", "shlb");
    return type;
}

bool FModuleManager::isModuleFile(const FPath& path) {
    FString extension;
    if (!path.isTypeOf("FNPath", true) || !path.getExtension(extension)) {
        return false;
    }
    return extension.compare(getFileType().getDosType(), -1, FCase::ignore) == 0;
}

FModuleBase* FModuleManager::createModule(FPath* path) {
    return new FModuleBase(path);
}

bool FModuleManager::loadCache(FDefaults&, FModuleBase&) {
    return false;
}

bool FModuleManager::storeCache(FDefaults&, FModuleBase& module) {
    module.use();
    const bool loaded = module.load();
    module.unuse();
    return loaded;
}

void FModuleManager::onModuleAdded(FModuleBase&) {}

void FModuleManager::onModuleRemoved(FModuleBase&) {}

void FModuleManager::onCacheComplete() {}

IDefaultPool* FModuleManager::getDefaults() const {
    return defaults_ ? defaults_.get() : FGlobalDefaultPool::getInstance();
}

std::int32_t FModuleManager::scanFolder(const FPath& folder, const FPath* fileFilter) {
    FFileSystem* files = FFileSystem::getInstance();
    if (files == nullptr || !files->folderExists(folder)) {
        return 0;
    }
    const ScanUnloading unloading;
    scanPath_ = FRefPtr<FPath>::adopt(static_cast<FPath*>(folder.clone()));
    std::int32_t added = 0;
    const auto iterator = FRefPtr<FFileIterator>::adopt(files->newIterator(folder, true));
    while (FPath* path = iterator ? iterator->next() : nullptr) {
        const bool wanted = fileFilter == nullptr ? isModuleFile(*path) : path->isEqual(fileFilter);
        if (wanted && path->isFile() && addModule(*path)) {
            ++added;
        }
    }
    scanPath_.reset();
    onCacheComplete();
    return added;
}

bool FModuleManager::addModule(const FPath& path) {
    const auto own = FRefPtr<FPath>::adopt(static_cast<FPath*>(path.clone()));
    const auto module = FRefPtr<FModuleBase>::adopt(createModule(own.get()));
    for (const auto& known : modules_) {
        if (known->isEqual(module.get())) {
            return false;
        }
    }
    if (!makeKnown(*module)) {
        return false;
    }
    modules_.push_back(module);
    onModuleAdded(*module);
    return true;
}

FString FModuleManager::groupOf(const FPath& path) const {
    FString name(sectionName_);
    name.append("\\");
    name.append(cacheName_);
    name.append("\\");
    name.append(path.getFullPath());
    // Group names are 8-bit; these bytes are the same in every locale.
    name.toWide();
    name.toMultiByte(CodePage::utf8);
    return name;
}

bool FModuleManager::makeKnown(FModuleBase& module) {
    const std::int64_t modified = modificationTime(*module.getPath());
    const FString group = groupOf(*module.getPath());
    IDefaultPool* pool = getDefaults();
    if (useCache_ && makeKnownFromCache(pool, group, modified, module)) {
        return true;
    }
    return makeKnownByLoading(pool, group, modified, module);
}

bool FModuleManager::makeKnownFromCache(IDefaultPool* pool, const FString& group, std::int64_t modified,
                                        FModuleBase& module) {
    FDefaults* section =
        pool != nullptr ? pool->getGroup(group.text8(), FDefaults::kNoVersion, IDefaultPool::Missing::left) : nullptr;
    if (section == nullptr) {
        return false;
    }
    std::int64_t remembered = kUnknownTime;
    if (section->getInt(kLastModified, remembered) && remembered == modified && modified != kUnknownTime &&
        loadCache(*section, module)) {
        return true;
    }
    pool->removeGroup(group.text8());
    return false;
}

bool FModuleManager::makeKnownByLoading(IDefaultPool* pool, const FString& group, std::int64_t modified,
                                        FModuleBase& module) {
    // Without settings there is nowhere to remember it.
    const auto forgotten = FRefPtr<FDefaults>::adopt(new FDefaults);
    FDefaults* section =
        pool != nullptr ? pool->getGroup(group.text8(), FDefaults::kNoVersion, IDefaultPool::Missing::made) : nullptr;
    if (section == nullptr) {
        section = forgotten.get();
    }
    if (storeCache(*section, module)) {
        section->setInt(kLastModified, modified);
        return true;
    }
    if (section != forgotten.get()) {
        pool->removeGroup(group.text8());
    }
    return false;
}

FString FModuleManager::sharedComponentsFolder() {
    auto folder = platform::readRegistryValue(kSharedKey, kSharedName);
    if (!folder) {
        folder = defaultSharedFolder();
        if (folder) {
            platform::writeRegistryValue(kSharedKey, kSharedName, *folder);
        }
    }
    return folder ? FString(folder->data(), static_cast<std::int32_t>(folder->size())) : FString();
}

std::int32_t FModuleManager::scanSharedComponents() {
    const FString folder = sharedComponentsFolder();
    return folder.isEmpty() ? 0 : scanFolder(FNPath(folder, PathKind::folder));
}

FModuleBase* FModuleManager::getModule(std::int32_t index) const {
    return index >= 0 && index < getModuleCount() ? modules_[static_cast<std::size_t>(index)].get() : nullptr;
}

std::int32_t FModuleManager::indexOfModule(const FStringRef& name) const {
    for (std::int32_t i = 0; i < getModuleCount(); ++i) {
        if (getModule(i)->getPath()->getName().compare(name, -1, FCase::ignore) == 0) {
            return i;
        }
    }
    return -1;
}

FModuleBase* FModuleManager::findModule(const FStringRef& name) const {
    return getModule(indexOfModule(name));
}

bool FModuleManager::removeModule(std::int32_t index) {
    const FRefPtr<FModuleBase> module(getModule(index));
    if (!module) {
        return false;
    }
    modules_.erase(modules_.begin() + index);
    onModuleRemoved(*module);
    return true;
}

} // namespace tessera
