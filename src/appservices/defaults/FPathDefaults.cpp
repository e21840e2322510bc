// The paths that the program last used, one text each, in a group of the settings. Members of FPath that stand here
// because the settings are built on the paths.
#include "appservices/defaults/FGlobalDefaultPool.h"
#include "persistence/paths/FNPath.h"

namespace tessera {

namespace {

constexpr const char* kGroup = "Default Paths";

} // namespace

void FPath::saveDefaultPath(const char* key) const {
    FGlobalDefaultPool* pool = FGlobalDefaultPool::getInstance();
    if (pool != nullptr && key != nullptr && *key != '\0') {
        pool->setString(kGroup, key, getFullPath());
    }
}

bool FPath::loadDefaultPath(const char* key) {
    FGlobalDefaultPool* pool = FGlobalDefaultPool::getInstance();
    FDefaults* group =
        pool != nullptr ? pool->getGroup(kGroup, FDefaults::kNoVersion, IDefaultPool::Missing::left) : nullptr;
    FString text;
    if (group == nullptr || key == nullptr || !group->getString(key, text)) {
        return false;
    }
    FNPath stored;
    stored.flags_ = flags_;
    stored.kind_ = kind_;
    stored.setNativePath(text);
    if (auto* native = cmCast<FNPath>(this)) {
        *native = stored;
    } else {
        *this = stored;
    }
    return true;
}

} // namespace tessera
