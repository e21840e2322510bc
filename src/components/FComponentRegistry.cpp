#include "components/FComponentRegistry.h"

#include "appservices/defaults/FDefaults.h"
#include "components/ComponentVersion.h"
#include "components/FModule.h"
#include "components/FPluginComponent.h"
#include "components/IComponentObserver.h"
#include "components/ModuleRecord.h"
#include "components/RecordText.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace tessera {
namespace {

FComponentRegistry* processRegistry = nullptr;

bool contains(const std::vector<FString>& names, const FStringRef& name) {
    return std::find_if(names.begin(), names.end(), [&](const FString& each) { return each == name; }) != names.end();
}

FString availabilityGroup(const FStringRef& category) {
    FString name;
    name.printf("Components\\Category %s\\Available", FString(category).text8());
    return name;
}

// The value name under which a class's availability is kept.
class UIDText {
public:
    explicit UIDText(const FUID& uid) { uid.toString(text_); }
    operator FStringRef() const { return FStringRef(text_); }

private:
    char text_[FUID::kTextSize];
};

bool isHexadecimal(std::string_view text) {
    return text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

} // namespace

std::size_t FComponentRegistry::UIDHash::operator()(const FUIDBytes& uid) const {
    std::size_t words[2] = {};
    static_assert(sizeof(words) <= sizeof(FUIDBytes));
    std::memcpy(words, uid.bytes, sizeof words);
    return words[0] ^ words[1];
}

FComponentRegistry* FComponentRegistry::getInstance() {
    return processRegistry;
}

FComponentRegistry::FComponentRegistry() : CmClass(FStringRef("Components")) {
    if (processRegistry == nullptr) {
        processRegistry = this;
    }
}

FComponentRegistry::~FComponentRegistry() {
    if (processRegistry == this) {
        processRegistry = nullptr;
    }
}

FModuleBase* FComponentRegistry::createModule(FPath* path) {
    return new FModule(path);
}

bool FComponentRegistry::isExcluded(const ModuleRecord& record) const {
    return std::any_of(record.classes.begin(), record.classes.end(), [&](const ClassInfoWide& info) {
        return contains(excludedCategories_, fieldText(info.category));
    });
}

// Asks the library itself. Without any accepted category there is none.
bool FComponentRegistry::hasAcceptedClasses(FModule& module) const {
    if (acceptedCategories_.empty()) {
        return false;
    }
    module.use();
    IModuleFactory* factory = module.getFactory(true);
    ModuleRecord record;
    const bool accepted = factory != nullptr && describeModule(*factory, record) &&
                          std::all_of(record.classes.begin(), record.classes.end(), [&](const ClassInfoWide& info) {
                              return contains(acceptedCategories_, fieldText(info.category));
                          });
    module.unuse();
    return accepted;
}

bool FComponentRegistry::loadCache(FDefaults& attributes, FModuleBase& module) {
    constexpr std::int32_t kUnusable = FModule::kClassesDependOnProgram | FModule::kClassesDependOnUser;
    auto* own = cmCast<FModule>(&module);
    ModuleRecord record;
    if (own == nullptr || !readModuleRecord(attributes, record) || (record.info.flags & kUnusable) != 0 ||
        isExcluded(record)) {
        return false;
    }
    if ((record.info.flags & FModule::kUsableUnloaded) == 0 && !hasAcceptedClasses(*own)) {
        return false;
    }
    own->setInfo(record.info);
    addComponents(record, *own);
    return true;
}

bool FComponentRegistry::storeCache(FDefaults& attributes, FModuleBase& module) {
    auto* own = cmCast<FModule>(&module);
    if (own == nullptr) {
        return false;
    }
    own->use();
    IModuleFactory* factory = own->getFactory(true);
    ModuleRecord record;
    const bool described = factory != nullptr && describeModule(*factory, record) && !isExcluded(record);
    if (described) {
        // First of all, since it may say that the library stays.
        own->setInfo(record.info);
        // One that can't be kept is loaded again by the next scan.
        writeModuleRecord(attributes, record);
        addComponents(record, *own);
    }
    own->unuse();
    return described;
}

void FComponentRegistry::addComponents(const ModuleRecord& record, FModule& module) {
    for (const ClassInfoWide& info : record.classes) {
        const auto component = FRefPtr<FPluginComponent>::adopt(new FPluginComponent(info, module));
        addComponent(component.get());
    }
}

void FComponentRegistry::onModuleRemoved(FModuleBase& module) {
    std::vector<FUIDBytes> uids;
    for (const auto& [name, components] : categories_) {
        for (const auto& component : components) {
            if (component->getModule() == &module) {
                uids.push_back(component->getUID());
            }
        }
    }
    for (const FUIDBytes& uid : uids) {
        removeComponent(uid);
    }
}

bool FComponentRegistry::addComponent(FComponentDescription* description) {
    if (description == nullptr || getComponent(description->getUID()) != nullptr) {
        return false;
    }
    const FRefPtr<FComponentDescription> component(description);
    component->setAvailable(readAvailability(*component));
    const FArray<IComponentObserver*> observers(observers_);
    for (IComponentObserver* observer : observers) {
        observer->componentAdded(*component);
    }
    categories_[FString(component->getCategory())].push_back(component);
    byIdentifier_.emplace(component->getUID().bytes(), component.get());
    deferChanged(kComponentsChanged);
    return true;
}

bool FComponentRegistry::removeComponent(const FUIDBytes& uid) {
    const FRefPtr<FComponentDescription> component(getComponent(uid));
    if (!component) {
        return false;
    }
    const auto category = categories_.find(component->getCategory());
    std::erase(category->second, component);
    if (category->second.empty()) {
        categories_.erase(category);
    }
    byIdentifier_.erase(uid);
    auto* plugin = cmCast<FPluginComponent>(component.get());
    if (plugin != nullptr && plugin->getInstanceCount() > 0) {
        retired_.emplace_back(plugin);
    }
    const FArray<IComponentObserver*> observers(observers_);
    for (IComponentObserver* observer : observers) {
        observer->componentRemoved(*component);
    }
    deferChanged(kComponentsChanged);
    return true;
}

FComponentDescription* FComponentRegistry::getComponent(const FUIDBytes& uid, const FModule* module) const {
    const auto found = byIdentifier_.find(uid);
    if (found == byIdentifier_.end() || (module != nullptr && found->second->getModule() != module)) {
        return nullptr;
    }
    return found->second;
}

const FComponentRegistry::Components* FComponentRegistry::findCategory(const FStringRef& name) const {
    const auto found = categories_.find(name);
    return found != categories_.end() ? &found->second : nullptr;
}

bool FComponentRegistry::getCategory(const FStringRef& name, Components& out) const {
    const Components* components = findCategory(name);
    out = components != nullptr ? *components : Components();
    return components != nullptr;
}

IBaseUnknown* FComponentRegistry::createByIdentifier(const FUIDBytes& uid) {
    const FRefPtr<FComponentDescription> component(getComponent(uid));
    return component ? component->createInstance() : nullptr;
}

std::int32_t FComponentRegistry::count(const char* category) {
    const Components* components = findCategory(category);
    return components != nullptr ? static_cast<std::int32_t>(components->size()) : 0;
}

IBaseUnknown* FComponentRegistry::createAt(const char* category, std::int32_t index) {
    if (index < 0 || index >= count(category)) {
        return nullptr;
    }
    const FRefPtr<FComponentDescription> component = (*findCategory(category))[static_cast<std::size_t>(index)];
    return component->createInstance();
}

IBaseUnknown* FComponentRegistry::createInstance(const FStringRef& category, const FStringRef& name) {
    if (category == FStringRef(kByIdentifier)) {
        const FString digits(name);
        FUID uid;
        const bool isIdentifier = uid.fromString(digits.text8()) && isHexadecimal(digits.text8());
        return isIdentifier ? createByIdentifier(uid) : nullptr;
    }
    const Components* components = findCategory(category);
    if (components == nullptr) {
        return nullptr;
    }
    for (const auto& each : *components) {
        if (each->getName() == name) {
            const FRefPtr<FComponentDescription> component(each);
            return component->createInstance();
        }
    }
    return nullptr;
}

void FComponentRegistry::releaseInstance(IBaseUnknown* instance) {
    if (instance == nullptr) {
        return;
    }
    for (const auto& [uid, description] : byIdentifier_) {
        if (cmCast<FPluginComponent>(description) != nullptr) {
            const FRefPtr<FComponentDescription> component(description);
            if (component->releaseInstance(instance)) {
                return;
            }
        }
    }
    for (const auto& each : retired_) {
        const FRefPtr<FPluginComponent> component(each);
        if (component->releaseInstance(instance)) {
            if (component->getInstanceCount() == 0) {
                std::erase(retired_, component);
            }
            return;
        }
    }
    // Of a class of the program itself.
    instance->release();
}

VersionCheck FComponentRegistry::checkVersion(const FUIDBytes& uid, const FModule* module,
                                              const FStringRef* minSdkVersion, const FStringRef* minVersion) const {
    const FComponentDescription* component = getComponent(uid, module);
    if (component == nullptr) {
        return VersionCheck::unknownClass;
    }
    if (minSdkVersion == nullptr && minVersion == nullptr) {
        return VersionCheck::tooOld;
    }
    const auto isMet = [](const FStringRef& version, const FStringRef* minimum) {
        return minimum == nullptr || ComponentVersion::parse(version) >= ComponentVersion::parse(*minimum);
    };
    return isMet(component->getSdkVersion(), minSdkVersion) && isMet(component->getVersion(), minVersion)
               ? VersionCheck::recentEnough
               : VersionCheck::tooOld;
}

bool FComponentRegistry::readAvailability(const FComponentDescription& description) const {
    IDefaultPool* pool = getDefaults();
    // Asked for in this way, a group that isn't there isn't made.
    FDefaults* group = pool != nullptr ? pool->getGroup(availabilityGroup(description.getCategory()).text8(),
                                                        FDefaults::kNoVersion, IDefaultPool::Missing::left)
                                       : nullptr;
    std::int64_t available = 1;
    return group == nullptr || !group->getInt(UIDText(description.getUID()), available) || available != 0;
}

bool FComponentRegistry::setAvailable(const FUIDBytes& uid, bool on) {
    FComponentDescription* component = getComponent(uid);
    if (component == nullptr) {
        return false;
    }
    component->setAvailable(on);
    return true;
}

bool FComponentRegistry::saveAvailability(const FStringRef& category) {
    const Components* components = findCategory(category);
    IDefaultPool* pool = getDefaults();
    if (components == nullptr || pool == nullptr) {
        return false;
    }
    const FString group = availabilityGroup(category);
    bool saved = true;
    for (const auto& component : *components) {
        saved = pool->setInt(group.text8(), UIDText(component->getUID()), component->isAvailable() ? 1 : 0) && saved;
    }
    return saved;
}

bool FComponentRegistry::setStayLoaded(const FUIDBytes& uid, bool on) {
    auto* component = cmCast<FPluginComponent>(getComponent(uid));
    if (component == nullptr) {
        return false;
    }
    component->getModule()->setStaysLoaded(on);
    return true;
}

void FComponentRegistry::addObserver(IComponentObserver* observer) {
    if (observer != nullptr) {
        observers_.add(observer);
    }
}

void FComponentRegistry::removeObserver(IComponentObserver* observer) {
    observers_.remove(observer);
}

} // namespace tessera
