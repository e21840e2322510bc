// FModuleManager: finds modules in folders, and remembers what each offers, so that most needn't be loaded to be known.
//
// What is remembered of a module is a group of the settings, named by section, cache and the module's full path, with
// the time of the module's file under "LastModified": a module whose file has another time is loaded and remembered
// anew. What can't be loaded isn't remembered. How a module is remembered is a matter of the subclass; this class knows
// libraries of which there is nothing to remember, so it loads each. Main thread.
#pragma once

#include "appservices/defaults/IDefaultPool.h"
#include "components/FModuleBase.h"
#include "foundation/text/FString.h"
#include "persistence/paths/FFileType.h"

#include <cstdint>
#include <vector>

namespace tessera {

class FDefaults;

class FModuleManager : public CmClass<FModuleManager, CmObject> {
public:
    static FMetaClass metaClass;

    explicit FModuleManager(const FStringRef& sectionName = FStringRef()) : sectionName_(sectionName) {}
    FModuleManager(const FModuleManager&) = delete;
    FModuleManager& operator=(const FModuleManager&) = delete;
    ~FModuleManager() override;

    // "Module", "shlb".
    virtual const FFileType& getFileType();
    // A native path with the extension of the file type, in whatever case.
    virtual bool isModuleFile(const FPath& path);
    // A new module with one reference for the caller.
    virtual FModuleBase* createModule(FPath* path);
    // Makes the module known from what is remembered of it; false when that won't do.
    virtual bool loadCache(FDefaults& attributes, FModuleBase& module);
    // Loads the module, makes it known, and remembers what there is to remember. False when it can't be loaded or isn't
    // wanted.
    virtual bool storeCache(FDefaults& attributes, FModuleBase& module);
    virtual void onModuleAdded(FModuleBase& module);
    virtual void onModuleRemoved(FModuleBase& module);
    // A scan has come to its end.
    virtual void onCacheComplete();

    // The modules among the files of the folder, or the one file that equals the filter; sub-folders aren't walked. A
    // module that is known already is passed over. Gives how many were added.
    std::int32_t scanFolder(const FPath& folder, const FPath* fileFilter = nullptr);
    // The folder that all programs of the vendor share, see sharedComponentsFolder.
    std::int32_t scanSharedComponents();
    // What the registry value "Path" of the key "Software\Marlgrove\Shared Components" says; without one, the folder
    // "Marlgrove\Shared Components" of the common program files, which is then entered there. May be empty.
    static FString sharedComponentsFolder();

    std::int32_t getModuleCount() const { return static_cast<std::int32_t>(modules_.size()); }
    // Borrowed; null for a bad index.
    FModuleBase* getModule(std::int32_t index) const;
    // By the name of its file, with the extension, in whatever case; the first one.
    FModuleBase* findModule(const FStringRef& name) const;
    // -1 when there is none.
    std::int32_t indexOfModule(const FStringRef& name) const;
    bool removeModule(std::int32_t index);

    const FString& getSectionName() const { return sectionName_; }
    // Where modules are remembered; null for the process's settings. Shared.
    void setDefaults(IDefaultPool* defaults) { defaults_ = defaults; }
    IDefaultPool* getDefaults() const;
    // With it off, each module is loaded by a scan.
    void setUseCache(bool on) { useCache_ = on; }
    bool usesCache() const { return useCache_; }
    // The folder that is being scanned; null outside a scan.
    const FPath* getScanPath() const { return scanPath_.get(); }

private:
    bool addModule(const FPath& path);
    bool makeKnown(FModuleBase& module);
    bool makeKnownFromCache(IDefaultPool* pool, const FString& group, std::int64_t modified, FModuleBase& module);
    bool makeKnownByLoading(IDefaultPool* pool, const FString& group, std::int64_t modified, FModuleBase& module);
    FString groupOf(const FPath& path) const;

    std::vector<FRefPtr<FModuleBase>> modules_;
    FString sectionName_;
    FString cacheName_{"Module Cache"};
    FRefPtr<IDefaultPool> defaults_;
    bool useCache_ = true;
    [[maybe_unused]] std::uint32_t spare_ = 0;
    FRefPtr<FPath> scanPath_;
};

} // namespace tessera
