// FDefaultPool: groups of settings by name, and the objects whose state is kept with them.
//
// A group belongs to a name and a version: asked for with another version, it is dropped with all that it holds, and a
// new one begins. A group that isn't there may be loaded when it is first asked for, by loadGroup, which classes below
// override. Groups keep the order in which they came; those without values aren't saved. See IDefaultPool for the
// operations, FDefaults for what a group takes. Main thread.
#pragma once

#include "appservices/defaults/GroupTable.h"
#include "appservices/defaults/IDefaultPool.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace tessera {

class FDefaultPool : public CmClass<FDefaultPool, CmObject, IDefaultPool> {
public:
    static FMetaClass metaClass;

    // What getLastError gives before anything was loaded or saved.
    static constexpr std::int32_t kNothingDone = -1;

    FDefaultPool();
    FDefaultPool(const FDefaultPool&) = delete;
    FDefaultPool& operator=(const FDefaultPool&) = delete;
    ~FDefaultPool() override;

    FDefaults* getGroup(const char* name, std::int32_t version, Missing missing) override;
    bool setInt(const char* group, const FStringRef& key, std::int64_t value) override;
    bool getInt(const char* group, const FStringRef& key, std::int64_t& value) override;
    bool setFloat(const char* group, const FStringRef& key, double value) override;
    bool getFloat(const char* group, const FStringRef& key, double& value) override;
    bool setString(const char* group, const FStringRef& key, const FStringRef& text) override;
    bool getString(const char* group, const FStringRef& key, FString& text) override;
    bool setObject(const char* group, const FStringRef& key, CmObject* object) override;
    CmObject* getObject(const char* group, const FStringRef& key, const char* className) override;
    bool remove(const char* group, const FStringRef& key) override;
    bool initInt(const char* group, const FStringRef& key, std::int64_t value) override;
    bool initFloat(const char* group, const FStringRef& key, double value) override;
    bool initString(const char* group, const FStringRef& key, const FStringRef& text) override;
    bool initObject(const char* group, const FStringRef& key, CmObject* object) override;
    void registerAutoSaver(CmObject* object) override;
    void unregisterAutoSaver(CmObject* object) override;
    void removeGroup(const char* name) override;

    // A group that isn't in memory, with one reference for the caller; null where there is none. Null here.
    virtual FDefaults* loadGroup(const char* name);

    // From now on there are no groups: every request for one is null, and everything about values is false.
    void close() { closed_ = true; }
    bool isClosed() const { return closed_; }
    // 0 after a load or save that went well, 1 after one that didn't.
    std::int32_t getLastError() const { return lastError_; }
    std::size_t getGroupCount() const { return groups_.size(); }

    // The list "Entries" of the groups' trees, and the tree "AutoSavers" of the trees of those who are registered.
    // Restoring drops the groups that are there, and keeps what was stored for auto-savers until it is handed out.
    // Groups that were removed, and names that have come already, are passed over.
    bool storeAttributes(FAttributes& attributes) const override;
    bool restoreAttributes(FAttributes& attributes) override;

protected:
    const GroupTable& groups() const { return groups_; }
    void dropGroups() { groups_.clear(); }
    // Names of groups that were removed, and not made again, since the last save.
    std::unordered_set<std::string>& deletedGroups() { return deletedGroups_; }
    // Whether groups are looked for in memory alone.
    void setLazyLoading(bool on) { noLazyLoad_ = !on; }
    void setLastError(std::int32_t error) { lastError_ = error; }

    bool hasAutoSavers() const { return !autoSavers_.empty(); }
    // One tree for each, under its name; one whose storeAttributes is false is left out.
    bool storeAutoSavers(FAttributes& attributes) const;
    void setPendingAutoSaverData(FAttributes* data);
    // Hands each its tree, if there is one for it.
    void restoreAutoSavers();

private:
    FDefaults* enter(std::string_view name, FRefPtr<FDefaults> group);
    void drop(const std::string& name);
    bool isAutoSaver(const CmObject* object) const;
    FDefaults* valuesOf(const char* group) { return getGroup(group, FDefaults::kNoVersion, Missing::made); }

    GroupTable groups_;
    std::vector<CmObject*> autoSavers_;
    std::unordered_set<std::string> deletedGroups_;
    FRefPtr<FAttributes> pendingAutoSaverData_;
    bool closed_ = false;
    bool noLazyLoad_ = false;
    std::int32_t lastError_ = kNothingDone;
};

} // namespace tessera
