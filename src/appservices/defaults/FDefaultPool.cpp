#include "appservices/defaults/FDefaultPool.h"

#include "appservices/defaults/StorableText.h"
#include "persistence/attributes/FAttributes.h"

#include <algorithm>

namespace tessera {

namespace {

constexpr const char* kEntries = "Entries";
constexpr const char* kAutoSavers = "AutoSavers";

} // namespace

FDefaultPool::FDefaultPool() = default;

FDefaultPool::~FDefaultPool() = default;

FDefaults* FDefaultPool::getGroup(const char* name, std::int32_t version, Missing missing) {
    if (closed_ || name == nullptr || *name == '\0') {
        return nullptr;
    }
    FDefaults* present = groups_.find(name);
    if (present != nullptr && present->getVersion() == version) {
        return present;
    }
    // The text may be the present group's own.
    const std::string key(name);
    if (present != nullptr) {
        // Values of another version mean something else; nothing of them is taken over.
        drop(key);
    } else if (!noLazyLoad_ && !deletedGroups_.contains(key)) {
        auto loaded = FRefPtr<FDefaults>::adopt(loadGroup(name));
        if (loaded && loaded->getVersion() == version) {
            return enter(key, std::move(loaded));
        }
    }
    if (missing == Missing::left || !isStorableText(storableForm(key.c_str()))) {
        return nullptr;
    }
    deletedGroups_.erase(key);
    return enter(key, FRefPtr<FDefaults>::adopt(new FDefaults(key.c_str(), version)));
}

FDefaults* FDefaultPool::enter(std::string_view name, FRefPtr<FDefaults> group) {
    FDefaults* entered = group.get();
    groups_.add(name, std::move(group));
    return entered;
}

void FDefaultPool::drop(const std::string& name) {
    groups_.remove(name);
    deletedGroups_.insert(name);
}

FDefaults* FDefaultPool::loadGroup(const char*) {
    return nullptr;
}

bool FDefaultPool::setInt(const char* group, const FStringRef& key, std::int64_t value) {
    FDefaults* values = valuesOf(group);
    return values != nullptr && values->setInt(key, value);
}

bool FDefaultPool::getInt(const char* group, const FStringRef& key, std::int64_t& value) {
    const FDefaults* values = valuesOf(group);
    return values != nullptr && values->getInt(key, value);
}

bool FDefaultPool::setFloat(const char* group, const FStringRef& key, double value) {
    FDefaults* values = valuesOf(group);
    return values != nullptr && values->setFloat(key, value);
}

bool FDefaultPool::getFloat(const char* group, const FStringRef& key, double& value) {
    const FDefaults* values = valuesOf(group);
    return values != nullptr && values->getFloat(key, value);
}

bool FDefaultPool::setString(const char* group, const FStringRef& key, const FStringRef& text) {
    FDefaults* values = valuesOf(group);
    return values != nullptr && values->setString(key, text);
}

bool FDefaultPool::getString(const char* group, const FStringRef& key, FString& text) {
    const FDefaults* values = valuesOf(group);
    return values != nullptr && values->getString(key, text);
}

bool FDefaultPool::setObject(const char* group, const FStringRef& key, CmObject* object) {
    FDefaults* values = valuesOf(group);
    return values != nullptr && values->setObject(key, object);
}

CmObject* FDefaultPool::getObject(const char* group, const FStringRef& key, const char* className) {
    const FDefaults* values = valuesOf(group);
    return values != nullptr ? values->getObject(key, className) : nullptr;
}

bool FDefaultPool::remove(const char* group, const FStringRef& key) {
    FDefaults* values = valuesOf(group);
    return values != nullptr && values->remove(key);
}

bool FDefaultPool::initInt(const char* group, const FStringRef& key, std::int64_t value) {
    FDefaults* values = valuesOf(group);
    return values != nullptr && values->initInt(key, value);
}

bool FDefaultPool::initFloat(const char* group, const FStringRef& key, double value) {
    FDefaults* values = valuesOf(group);
    return values != nullptr && values->initFloat(key, value);
}

bool FDefaultPool::initString(const char* group, const FStringRef& key, const FStringRef& text) {
    FDefaults* values = valuesOf(group);
    return values != nullptr && values->initString(key, text);
}

bool FDefaultPool::initObject(const char* group, const FStringRef& key, CmObject* object) {
    FDefaults* values = valuesOf(group);
    return values != nullptr && values->initObject(key, object);
}

void FDefaultPool::registerAutoSaver(CmObject* object) {
    if (object != nullptr && !isAutoSaver(object)) {
        autoSavers_.push_back(object);
    }
}

void FDefaultPool::unregisterAutoSaver(CmObject* object) {
    std::erase(autoSavers_, object);
}

bool FDefaultPool::isAutoSaver(const CmObject* object) const {
    return std::find(autoSavers_.begin(), autoSavers_.end(), object) != autoSavers_.end();
}

void FDefaultPool::removeGroup(const char* name) {
    if (!closed_ && name != nullptr && *name != '\0') {
        // Also one that isn't in memory: it may lie in a file.
        drop(name);
    }
}

bool FDefaultPool::storeAttributes(FAttributes& attributes) const {
    const bool stored = groups_.forEach([&attributes](std::string_view, const FDefaults& group) {
        if (group.isEmpty()) {
            return true;
        }
        auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
        return group.storeAttributes(*tree) && attributes.appendSub(kEntries, tree.detach());
    });
    if (!stored || !hasAutoSavers()) {
        return stored;
    }
    const auto savers = FRefPtr<FAttributes>::adopt(new FAttributes);
    return storeAutoSavers(*savers) && attributes.setObject(kAutoSavers, savers.get(), AttributeHolding::shared);
}

bool FDefaultPool::restoreAttributes(FAttributes& attributes) {
    dropGroups();
    attributes.resetList(kEntries);
    while (FAttributes* tree = attributes.nextSub(kEntries)) {
        auto group = FRefPtr<FDefaults>::adopt(new FDefaults);
        group->restoreAttributes(*tree);
        const std::string name(group->getGroupName().view8());
        const bool fit = !name.empty() && isStorableText(storableForm(name.c_str()));
        if (fit && groups_.find(name) == nullptr && !deletedGroups_.contains(name)) {
            enter(name, std::move(group));
        }
    }
    pendingAutoSaverData_ = attributes.getTree(kAutoSavers);
    return true;
}

bool FDefaultPool::storeAutoSavers(FAttributes& attributes) const {
    // A saver may register further ones, or take others out, while it is stored.
    const std::vector<CmObject*> savers = autoSavers_;
    for (CmObject* saver : savers) {
        auto tree = FRefPtr<FAttributes>::adopt(new FAttributes);
        if (isAutoSaver(saver) && saver->storeAttributes(*tree) &&
            !attributes.setObject(saver->getClassName(), tree.detach(), AttributeHolding::owned,
                                  AttributeFlags::kAppend)) {
            return false;
        }
    }
    return true;
}

void FDefaultPool::setPendingAutoSaverData(FAttributes* data) {
    pendingAutoSaverData_ = data;
}

void FDefaultPool::restoreAutoSavers() {
    const FRefPtr<FAttributes> data = std::move(pendingAutoSaverData_);
    if (!data) {
        return;
    }
    // A saver may register further ones, or take itself out, while it is restored.
    const std::vector<CmObject*> savers = autoSavers_;
    for (CmObject* saver : savers) {
        FAttributes* tree = data->getTree(saver->getClassName());
        if (tree != nullptr && isAutoSaver(saver)) {
            saver->restoreAttributes(*tree);
        }
    }
}

} // namespace tessera
